#include "bench/model/switch_table.h"

namespace bitlux {

namespace {

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

void SwitchTable::add(const std::string& group, const std::vector<std::string>& captions,
                      std::uint64_t& word, int first) {
    for (int bit = first; const std::string& caption : captions) {
        const int own = bit++;
        ChipSwitch one{.group = trimmed(group), .name = trimmed(caption)};
        if (one.name == "-")
            continue;
        if (one.name.empty() || !taken_.emplace(one.group, one.name).second) {
            one.name += (one.name.empty() ? "" : " ") + std::to_string(own);
            taken_.emplace(one.group, one.name);
        }
        switches_.push_back(std::move(one));
        bits_.push_back({.word = &word, .bit = own});
    }
}

} // namespace bitlux
