#include "panels/common/key_filters.h"

namespace bitlux {

namespace {

constexpr int backspace = 8;
constexpr int enter = 13;

bool within(int key, char first, char last) {
    return key >= first && key <= last;
}

bool isDigit(int key) {
    return within(key, '0', '9');
}

} // namespace

int KeyFilters::passIf(bool good, int key) {
    if (good)
        return key;
    if (sound_ != nullptr)
        sound_->beep();
    return 0;
}

int KeyFilters::hexKey(int key, const char* refusal) {
    if (within(key, 'a', 'z'))
        key += 'A' - 'a';
    const int passed =
        passIf(key == backspace || key == enter || isDigit(key) || within(key, 'A', 'F'), key);
    if (passed == 0)
        boxes_.show({.text = refusal});
    return passed;
}

int KeyFilters::NUM_check(int key) {
    return passIf(key == backspace || isDigit(key), key);
}

int KeyFilters::DECimal_check(int key) {
    return passIf(key == backspace || key == '.' || isDigit(key), key);
}

int KeyFilters::BINary_x_check(int key) {
    return passIf(key == backspace || within(key, '0', '1') || key == 'x', key);
}

} // namespace bitlux
