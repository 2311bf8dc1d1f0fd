#include "chips/bit_list.h"

#include "platform/conversions.h"

#include <algorithm>
#include <bit>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr int mostBits = 64;

/// Parses a number from 0 to 63.
std::optional<int> bitNumber(std::string_view text) {
    const std::optional<int> number = wholeNumber<int>(text);
    return number && *number >= 0 && *number < mostBits ? number : std::nullopt;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string_view{}
               : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

BitList BitList::range(int low, int count) {
    BitList list;
    for (int bit = low; bit < low + count; ++bit)
        list.add(bit);
    return list;
}

std::optional<BitList> BitList::parse(std::string_view text) {
    std::vector<int> bits; // most significant first
    while (true) {
        const std::size_t comma = text.find(',');
        const std::string_view part = trimmed(text.substr(0, comma));
        const std::size_t colon = part.find(':');
        const std::optional<int> first = bitNumber(trimmed(part.substr(0, colon)));
        const std::optional<int> last =
            colon == std::string_view::npos ? first : bitNumber(trimmed(part.substr(colon + 1)));
        if (!first || !last || *first < *last)
            return std::nullopt;
        for (int bit = *first; bit >= *last; --bit)
            bits.push_back(bit);
        if (comma == std::string_view::npos)
            break;
        text.remove_prefix(comma + 1);
    }
    BitList list;
    for (auto bit = bits.rbegin(); bit != bits.rend(); ++bit) {
        if (list.has(*bit))
            return std::nullopt;
        list.add(*bit);
    }
    return list;
}

void BitList::add(int bit) {
    inOrder_ = inOrder_ && (bits_.empty() || bit == bits_.back() + 1);
    bits_.push_back(static_cast<std::uint8_t>(bit));
    mask_ |= std::uint64_t{1} << bit;
}

int BitList::highest() const {
    return mostBits - 1 - std::countl_zero(mask_);
}

std::uint64_t BitList::largest() const {
    return bits_.size() >= mostBits ? ~std::uint64_t{0} : (std::uint64_t{1} << bits_.size()) - 1;
}

std::uint64_t BitList::placed(std::uint64_t value) const {
    if (inOrder_)
        return bits_.empty() ? 0 : value << bits_.front() & mask_;
    std::uint64_t word = 0;
    for (const std::uint8_t bit : bits_) {
        word |= (value & 1) << bit;
        value >>= 1;
    }
    return word;
}

std::uint64_t BitList::taken(std::uint64_t word) const {
    if (inOrder_)
        return bits_.empty() ? 0 : (word & mask_) >> bits_.front();
    std::uint64_t value = 0;
    for (std::size_t k = 0; k < bits_.size(); ++k)
        value |= (word >> bits_[k] & 1) << k;
    return value;
}

std::string BitList::text() const {
    std::string text;
    for (std::size_t top = bits_.size(); top > 0;) {
        std::size_t low = top - 1; // the run of bits that ends here
        while (low > 0 && bits_[low - 1] + 1 == bits_[low])
            --low;
        text += text.empty() ? "" : ",";
        text += low + 1 == top ? fmt::format("{}", bits_[low])
                               : fmt::format("{}:{}", bits_[top - 1], bits_[low]);
        top = low;
    }
    return text;
}

} // namespace bitlux::chips
