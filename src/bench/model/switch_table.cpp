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
                      std::uint64_t& word) {
    for (std::size_t bit = 0; bit < captions.size(); ++bit) {
        ChipSwitch one{.group = trimmed(group), .name = trimmed(captions[bit])};
        if (one.name == "-")
            continue;
        if (one.name.empty() || !taken_.emplace(one.group, one.name).second) {
            one.name += (one.name.empty() ? "" : " ") + std::to_string(bit);
            taken_.emplace(one.group, one.name);
        }
        switches_.push_back(std::move(one));
        bits_.push_back({.word = &word, .bit = static_cast<int>(bit)});
    }
}

} // namespace bitlux
