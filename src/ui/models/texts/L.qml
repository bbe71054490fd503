pragma Singleton
import QtQml
import Vellmoor.Models

// The texts of the window. A binding that calls one of these is evaluated again when the language changes.
QtObject {
    function tr(key: string): string {
        return Texts.revision >= 0 ? Texts.text(key) : "";
    }

    function tr1(key: string, argument: string): string {
        return Texts.revision >= 0 ? Texts.text1(key, argument) : "";
    }

    // A number of things, with its digits grouped; "one" is the text for exactly one.
    function count(many: string, one: string, number: int): string {
        return Texts.revision >= 0 ? Texts.countText(many, one, number) : "";
    }

    // A number with its digits grouped.
    function number(number: int): string {
        return Texts.numberText(number);
    }

    function items(number: int): string {
        return L.count("%d 项", "1 项", number);
    }
}
