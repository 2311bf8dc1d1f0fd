#include "session/quick_command_table.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <stdexcept>

namespace bitlux {

void QuickCommandTable::recreate(int wordLength) {
    wordLength_ = static_cast<std::size_t>(std::max(wordLength, 0));
    bits_.clear();
    names_.clear();
    nameEnds_.clear();
    slots_.clear();
    addRow();
}

void QuickCommandTable::addRow() {
    slots_.clear();
    nameEnds_.push_back(names_.size());
    bits_.resize(bits_.size() + wordLength_, noBit);
}

std::string_view QuickCommandTable::name(std::size_t row) const {
    requireRow(row);
    const std::size_t begin = row == 0 ? 0 : nameEnds_[row - 1];
    return std::string_view(names_).substr(begin, nameEnds_[row] - begin);
}

std::span<const std::int16_t> QuickCommandTable::bits(std::size_t row) const {
    requireRow(row);
    return std::span(bits_).subspan(row * wordLength_, wordLength_);
}

void QuickCommandTable::nameLastRow(std::string_view name) {
    slots_.clear();
    names_.resize(rows() == 1 ? 0 : nameEnds_[rows() - 2]);
    names_ += name;
    nameEnds_.back() = names_.size();
}

void QuickCommandTable::setBits(std::size_t row, std::span<const std::int16_t> bits) {
    requireRow(row);
    if (bits.size() < wordLength_)
        throw std::out_of_range("Subscript out of range: the Quick Command is too short");
    std::copy_n(bits.begin(), wordLength_,
                bits_.begin() + static_cast<std::ptrdiff_t>(row * wordLength_));
}

void QuickCommandTable::removeRow(std::size_t row) {
    requireRow(row);
    const std::size_t begin = row == 0 ? 0 : nameEnds_[row - 1];
    const std::size_t length = nameEnds_[row] - begin;
    slots_.clear();
    names_.erase(begin, length);
    nameEnds_.erase(nameEnds_.begin() + static_cast<std::ptrdiff_t>(row));
    for (std::size_t i = row; i < nameEnds_.size(); ++i)
        nameEnds_[i] -= length;
    const auto firstBit = bits_.begin() + static_cast<std::ptrdiff_t>(row * wordLength_);
    bits_.erase(firstBit, firstBit + static_cast<std::ptrdiff_t>(wordLength_));
}

std::optional<std::size_t> QuickCommandTable::lastRowNamed(std::string_view name) const {
    if (slots_.empty())
        makeIndex();
    const std::size_t row = slots_[slotOf(name)];
    return row == 0 ? std::nullopt : std::optional(row - 1);
}

void QuickCommandTable::makeIndex() const {
    slots_.assign(std::bit_ceil(2 * rows()), 0);
    for (std::size_t row = 0; row < rows(); ++row)
        slots_[slotOf(name(row))] = static_cast<std::uint32_t>(row + 1);
}

std::size_t QuickCommandTable::slotOf(std::string_view name) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = std::hash<std::string_view>{}(name)&mask;
    while (slots_[slot] != 0 && this->name(slots_[slot] - 1) != name)
        slot = (slot + 1) & mask;
    return slot;
}

void QuickCommandTable::requireRow(std::size_t row) const {
    if (row >= rows())
        throw std::out_of_range("Subscript out of range: there is no Quick Command " +
                                std::to_string(row));
}

} // namespace bitlux
