// The usual text.
Words {
}
