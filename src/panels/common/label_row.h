#pragma once

#include "panels/common/colours.h"
#include "platform/forms/controls.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace bitlux {

/// 1 to 64 labels that show the bits of a value, or store it: label i in the colour of a one means
/// that bit i is set.
class LabelRow {
public:
    using Labels = std::vector<forms::Label*>;

    LabelRow(Labels labels, const chips::RowColours& colours)
        : labels_(std::move(labels)), colours_(colours) {}

    [[nodiscard]] int size() const { return static_cast<int>(labels_.size()); }
    [[nodiscard]] const Labels& labels() const { return labels_; }
    [[nodiscard]] const chips::RowColours& colours() const { return colours_; }

    [[nodiscard]] forms::Label& label(int bit) const {
        return *labels_.at(static_cast<std::size_t>(bit));
    }

    /// Every colour other than that of a one is a zero.
    [[nodiscard]] bool lit(int bit) const { return label(bit).backColor() == colours_.one; }
    [[nodiscard]] std::uint64_t value() const {
        std::uint64_t sum = 0;
        for (int bit = 0; bit < size(); ++bit)
            sum |= (lit(bit) ? std::uint64_t{1} : 0) << bit;
        return sum;
    }
    /// Bits 7 to 0 of the value.
    [[nodiscard]] std::uint8_t byte() const { return static_cast<std::uint8_t>(value()); }

    void set(int bit, bool on) const { light(label(bit), on, colours_); }
    /// Bits beyond the row are ignored.
    void show(std::uint64_t value) const {
        for (int bit = 0; bit < size(); ++bit)
            set(bit, (value >> bit & 1) != 0);
    }

    /// Marks the labels of these bits, and no others.
    void mark(std::uint64_t bits) const {
        for (int bit = 0; bit < size(); ++bit)
            label(bit).setMarked((bits >> bit & 1) != 0);
    }

private:
    Labels labels_;
    chips::RowColours colours_;
};

} // namespace bitlux
