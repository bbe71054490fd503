import QtQuick

// The usual text.
Words {
}
