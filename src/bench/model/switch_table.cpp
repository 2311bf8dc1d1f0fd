#include "bench/model/switch_table.h"

#include <algorithm>

namespace bitlux {

namespace {

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

bool SwitchTable::has(const ChipSwitch& one) const {
    return std::any_of(switches_.begin(), switches_.end(), [&one](const ChipSwitch& other) {
        return other.group == one.group && other.name == one.name;
    });
}

void SwitchTable::add(const std::string& group, const std::vector<std::string>& captions,
                      std::uint64_t& word) {
    for (std::size_t bit = 0; bit < captions.size(); ++bit) {
        ChipSwitch one{.group = trimmed(group), .name = trimmed(captions[bit])};
        if (one.name == "-")
            continue;
        if (one.name.empty() || has(one))
            one.name += (one.name.empty() ? "" : " ") + std::to_string(bit);
        switches_.push_back(std::move(one));
        bits_.push_back({.word = &word, .bit = static_cast<int>(bit)});
    }
}

} // namespace bitlux
