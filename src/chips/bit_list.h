#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::chips {

/// Bits of a word or of a register, at most 64 and each once. They need neither be adjacent nor in
/// order: bit k of a value is bit at(k).
class BitList {
public:
    BitList() = default;
    /// The bits `low` to `low + count - 1`, in order.
    static BitList range(int low, int count);
    /// Parses a text with the most significant bit first, as "7:5", "3" or "2:0,4:3"; nothing for
    /// any other text, or one that repeats a bit or has one beyond 63.
    static std::optional<BitList> parse(std::string_view text);

    [[nodiscard]] int size() const { return static_cast<int>(bits_.size()); }
    [[nodiscard]] bool empty() const { return bits_.empty(); }
    /// The bit that contains bit k of a value.
    [[nodiscard]] int at(int k) const { return bits_.at(static_cast<std::size_t>(k)); }
    [[nodiscard]] bool has(int bit) const { return (mask_ >> bit & 1) != 0; }
    /// The highest bit, -1 when there is none.
    [[nodiscard]] int highest() const;

    /// All bits set.
    [[nodiscard]] std::uint64_t mask() const { return mask_; }
    /// The largest value that fits.
    [[nodiscard]] std::uint64_t largest() const;
    /// `value` shifted to these bits; its bits that do not fit are dropped.
    [[nodiscard]] std::uint64_t placed(std::uint64_t value) const;
    /// The value of these bits in `word`.
    [[nodiscard]] std::uint64_t taken(std::uint64_t word) const;
    /// `word` with these bits replaced.
    [[nodiscard]] std::uint64_t replaced(std::uint64_t word, std::uint64_t value) const {
        return (word & ~mask_) | placed(value);
    }

    /// In the format of parse: "7:5", or "2:0,4:3" when they are not adjacent.
    [[nodiscard]] std::string text() const;

private:
    void add(int bit);

    std::vector<std::uint8_t> bits_; ///< least significant first
    std::uint64_t mask_ = 0;
    bool inOrder_ = true; ///< they are adjacent
};

} // namespace bitlux::chips
