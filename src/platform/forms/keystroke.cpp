#include "platform/forms/keystroke.h"

#include "platform/forms/near_names.h"
#include "platform/forms/unknown_name.h"

#include <array>
#include <cctype>
#include <string>
#include <utility>
#include <vector>

namespace bitlux::forms {

namespace {

constexpr std::array<std::pair<const char*, KeyCode>, 15> keyNames{{
    {"Backspace", KeyCode::Backspace},
    {"Tab", KeyCode::Tab},
    {"Enter", KeyCode::Enter},
    {"Escape", KeyCode::Escape},
    {"Space", KeyCode::Space},
    {"PageUp", KeyCode::PageUp},
    {"PageDown", KeyCode::PageDown},
    {"End", KeyCode::End},
    {"Home", KeyCode::Home},
    {"Left", KeyCode::Left},
    {"Up", KeyCode::Up},
    {"Right", KeyCode::Right},
    {"Down", KeyCode::Down},
    {"Insert", KeyCode::Insert},
    {"Delete", KeyCode::Delete},
}};

constexpr int functionKeys = 12;

} // namespace

Keystroke keystrokeOf(char character) {
    const int capital = std::toupper(static_cast<unsigned char>(character));
    return {.code = static_cast<KeyCode>(capital), .character = character};
}

Keystroke keystrokeOf(KeyCode code) {
    switch (code) {
    case KeyCode::Backspace:
    case KeyCode::Tab:
    case KeyCode::Enter:
    case KeyCode::Escape:
    case KeyCode::Space:
        return {.code = code, .character = static_cast<char>(code)};
    default:
        return {.code = code};
    }
}

Keystroke keystrokeNamed(std::string_view name) {
    if (name.size() == 1)
        return keystrokeOf(name.front());
    std::vector<std::string> known;
    for (const auto& [keyName, code] : keyNames) {
        if (name == keyName)
            return keystrokeOf(code);
        known.emplace_back(keyName);
    }
    for (int n = 1; n <= functionKeys; ++n)
        if (name == "F" + std::to_string(n))
            return {.code = static_cast<KeyCode>(static_cast<int>(KeyCode::F1) + n - 1)};
    throw UnknownName("key " + std::string(name), nearNames(name, known));
}

} // namespace bitlux::forms
