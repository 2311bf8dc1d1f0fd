#pragma once

#include "panels/common/colours.h"
#include "platform/forms/controls.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace bitlux {

/// Eight labels that are the store of a byte: label i lit is bit i set.
class LabelRow {
public:
    static constexpr int bits = 8;
    using Labels = std::array<forms::Label*, bits>;

    explicit LabelRow(const Labels& labels) : labels_(labels) {}

    [[nodiscard]] forms::Label& label(int bit) const {
        return *labels_.at(static_cast<std::size_t>(bit));
    }

    /// What is lit in the colour of the write rows; any other colour is a zero.
    [[nodiscard]] bool lit(int bit) const { return label(bit).backColor() == litColour; }
    [[nodiscard]] std::uint8_t byte() const {
        unsigned sum = 0;
        for (int bit = 0; bit < bits; ++bit)
            sum |= lit(bit) ? 1U << bit : 0U;
        return static_cast<std::uint8_t>(sum);
    }

    void set(int bit, bool on, forms::Color colour = litColour) const {
        light(label(bit), on, colour);
    }
    void show(std::uint8_t byte, forms::Color colour = litColour) const {
        for (int bit = 0; bit < bits; ++bit)
            set(bit, (byte >> bit & 1) != 0, colour);
    }

private:
    Labels labels_;
};

} // namespace bitlux
