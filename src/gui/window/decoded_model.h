#pragma once

#include "program/decoded_words.h"

#include <QAbstractTableModel>
#include <QFont>

namespace bitlux::gui {

/// The decoded log as a table. A text is made when a cell asks for it, so that rows out of sight
/// cost nothing.
class DecodedModel : public QAbstractTableModel {
public:
    /// `words` outlives it.
    DecodedModel(DecodedWords& words, QObject* parent);

    /// Shows the words that there are now. Returns how many went at the front while others stayed.
    int follow();
    /// Number of the word in a row.
    [[nodiscard]] std::size_t wordAt(int row) const {
        return first_ + static_cast<std::size_t>(row);
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    void restart();
    int dropOld();
    void addNew();
    void decodeAgain();

    DecodedWords& words_;
    const DecodedLog* log_ = nullptr; ///< with the names of `chip_`
    std::string chip_;
    std::size_t first_ = 0;
    std::size_t end_ = 0;
    QFont digits_;
};

} // namespace bitlux::gui
