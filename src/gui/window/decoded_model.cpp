#include "gui/window/decoded_model.h"

#include "gui/desktop/theme.h"

#include <utility>

namespace bitlux::gui {

namespace {

using Column = DecodedLog::Column;

bool hasDigits(Column column) {
    return column == Column::Time || column == Column::Word || column == Column::Answer;
}

} // namespace

DecodedModel::DecodedModel(DecodedWords& words, QObject* parent)
    : QAbstractTableModel(parent), words_(words), digits_(fixedFont()) {
    follow();
}

int DecodedModel::follow() {
    log_ = &words_.log();
    const std::string chip = words_.names().chip();
    const bool isOther = std::exchange(chip_, chip) != chip;
    if (log_->first() >= end_) {
        if (end_ != log_->end() || first_ != end_)
            restart();
        return 0;
    }
    const int dropped = dropOld();
    addNew();
    if (isOther)
        decodeAgain();
    return dropped;
}

/// None of the words is there any more.
void DecodedModel::restart() {
    beginResetModel();
    first_ = log_->first();
    end_ = log_->end();
    endResetModel();
}

int DecodedModel::dropOld() {
    const auto dropped = static_cast<int>(log_->first() - first_);
    if (dropped == 0)
        return 0;
    beginRemoveRows({}, 0, dropped - 1);
    first_ = log_->first();
    endRemoveRows();
    return dropped;
}

void DecodedModel::addNew() {
    if (log_->end() == end_)
        return;
    beginInsertRows({}, rowCount(), static_cast<int>(log_->end() - first_) - 1);
    end_ = log_->end();
    endInsertRows();
}

void DecodedModel::decodeAgain() {
    emit dataChanged(index(0, static_cast<int>(Column::Meaning)),
                     index(rowCount() - 1, static_cast<int>(Column::AnswerMeaning)));
}

int DecodedModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(end_ - first_);
}

int DecodedModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : DecodedLog::columns;
}

QVariant DecodedModel::data(const QModelIndex& index, int role) const {
    const auto column = static_cast<Column>(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: {
        const std::size_t word = wordAt(index.row());
        if (word < log_->first()) // it went since the last refresh
            return {};
        const QString text = QString::fromStdString(log_->text(word, column));
        return role == Qt::DisplayRole || text.isEmpty()
                   ? text
                   : "<span>" + text.toHtmlEscaped() + "</span>"; // is wrapped
    }
    case Qt::FontRole:
        return hasDigits(column) ? QVariant(digits_) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter |
                        (column == Column::Time ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

QVariant DecodedModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return DecodedLog::title(static_cast<Column>(section));
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (section == 0 ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

} // namespace bitlux::gui
