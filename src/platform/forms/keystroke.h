#pragma once

#include <cstdint>
#include <string_view>

namespace bitlux::forms {

/// Windows key codes. Letters and digits have the codes of their capital characters.
enum class KeyCode : std::int16_t {
    Backspace = 8,
    Tab = 9,
    Enter = 13,
    Escape = 27,
    Space = 32,
    PageUp = 33,
    PageDown = 34,
    End = 35,
    Home = 36,
    Left = 37,
    Up = 38,
    Right = 39,
    Down = 40,
    Insert = 45,
    Delete = 46,
    F1 = 112,
};

/// A key that goes down, and the character that it types, 0 for none.
struct Keystroke {
    KeyCode code;
    char character = 0;
};

/// The key that types a character.
Keystroke keystrokeOf(char character);
/// What a key types by itself.
Keystroke keystrokeOf(KeyCode code);
/// A key by its name, as "Enter", "Escape", "F5", or by its character, as "a"; raises UnknownName.
Keystroke keystrokeNamed(std::string_view name);

} // namespace bitlux::forms
