#pragma once

#include "panels/common/colours.h"
#include "platform/forms/controls.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace bitlux {

/// Labels that are the store of a register's value: label i lit is bit i set. 1 to 32 of them.
class LabelRow {
public:
    using Labels = std::vector<forms::Label*>;

    explicit LabelRow(Labels labels) : labels_(std::move(labels)) {}

    [[nodiscard]] int size() const { return static_cast<int>(labels_.size()); }
    [[nodiscard]] const Labels& labels() const { return labels_; }

    [[nodiscard]] forms::Label& label(int bit) const {
        return *labels_.at(static_cast<std::size_t>(bit));
    }

    /// What is lit in the colour of the write rows; any other colour is a zero.
    [[nodiscard]] bool lit(int bit) const { return label(bit).backColor() == litColour; }
    [[nodiscard]] std::uint32_t value() const {
        std::uint32_t sum = 0;
        for (int bit = 0; bit < size(); ++bit)
            sum |= lit(bit) ? 1U << bit : 0U;
        return sum;
    }
    /// Bits 7 to 0 of the value.
    [[nodiscard]] std::uint8_t byte() const { return static_cast<std::uint8_t>(value()); }

    void set(int bit, bool on, forms::Color colour = litColour) const {
        light(label(bit), on, colour);
    }
    /// Bits beyond the row are left out.
    void show(std::uint32_t value, forms::Color colour = litColour) const {
        for (int bit = 0; bit < size(); ++bit)
            set(bit, (value >> bit & 1) != 0, colour);
    }

private:
    Labels labels_;
};

} // namespace bitlux
