#include "session/quick_command_table.h"

#include <algorithm>
#include <stdexcept>

namespace bitlux {

void QuickCommandTable::recreate(int wordLength) {
    wordLength_ = static_cast<std::size_t>(std::max(wordLength, 0));
    bits_.clear();
    names_.clear();
    nameEnds_.clear();
    index_.reset();
    addRow();
}

void QuickCommandTable::addRow() {
    index_.reset();
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
    index_.reset();
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
    index_.reset();
    names_.erase(begin, length);
    nameEnds_.erase(nameEnds_.begin() + static_cast<std::ptrdiff_t>(row));
    for (std::size_t i = row; i < nameEnds_.size(); ++i)
        nameEnds_[i] -= length;
    const auto firstBit = bits_.begin() + static_cast<std::ptrdiff_t>(row * wordLength_);
    bits_.erase(firstBit, firstBit + static_cast<std::ptrdiff_t>(wordLength_));
}

std::optional<std::size_t> QuickCommandTable::lastRowNamed(std::string_view name) const {
    if (!index_) {
        index_.emplace(rows());
        for (std::size_t row = 0; row < rows(); ++row)
            index_->insert_or_assign(std::string(this->name(row)), row);
    }
    const auto found = index_->find(name);
    return found == index_->end() ? std::nullopt : std::optional(found->second);
}

void QuickCommandTable::requireRow(std::size_t row) const {
    if (row >= rows())
        throw std::out_of_range("Subscript out of range: there is no Quick Command " +
                                std::to_string(row));
}

} // namespace bitlux
