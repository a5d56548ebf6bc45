// The key press of a text box, as the number fields of the dialogs see it:
// every typed character (and Enter and Backspace) goes through a handler
// before the box gets it. The handler may change the key or set it to 0,
// which swallows it. Keys that type nothing (arrows, Delete, Home, the
// shortcuts with Ctrl) reach the box untouched, and pasted text is not seen
// unless the field asks for it.
#pragma once

#include <functional>
#include <string>

class QLineEdit;
class QString;

namespace quarle::ui {

// keyAscii: 13 for Enter, 8 for Backspace, else the character's code.
using KeyPressHandler = std::function<void(int& keyAscii)>;

void OnKeyPress(QLineEdit* box, KeyPressHandler handler);

// Text that comes into a number field other than by a key: pasted, dropped,
// or given by an input method.
enum class Pasted {
    Kept,     // stands as it came (the detail dialogs)
    Filtered, // loses, character by character, what FilterKey refuses (the wizards)
};
// Enter in a number field.
enum class Enter {
    Swallowed, // FilterKey refuses it (the detail dialogs)
    Passes,    // reaches the form and its default button (the wizards)
};

// The number field's filter: each typed key through FilterKey with these
// flags (bit 0 a point, bit 1 a minus; a comma becomes a point).
void FilterKeys(QLineEdit* box, int flags, Pasted pasted = Pasted::Kept,
                Enter enter = Enter::Swallowed);

// A number field's text as the core's number readers take it: characters
// outside Latin-1 can be no part of a number and read as '?'.
std::string NumberText(const QString& text);

} // namespace quarle::ui
