#pragma once

#include "platform/desk.h"

#include <cstdint>

/// Filters for the keys typed into a text box: each receives a character's code and returns the one
/// to type instead, 0 for none. A refused key beeps.
namespace bitlux {

class KeyFilters {
public:
    /// All outlive it; `sound` may be null.
    KeyFilters(MessageBoxes& boxes, Sound* sound) : boxes_(boxes), sound_(sound) {}

    /// Hexadecimal digits in capital letters, Backspace and Enter; a refused key also shows a box.
    int HEXA_check(int key) { return hexKey(key, "please enter a good Hexadecimal number"); }
    /// The same with another text in the box.
    int hexKey(int key, const char* refusal = "Please enter a valid hexadecimal number");
    /// Digits and Backspace.
    int NUM_check(int key);
    /// The same and the decimal point.
    int DECimal_check(int key);
    /// 0, 1, x and Backspace.
    int BINary_x_check(int key);

private:
    int passIf(bool good, int key);

    MessageBoxes& boxes_;
    Sound* sound_;
};

} // namespace bitlux
