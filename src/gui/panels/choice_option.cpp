#include "gui/panels/choice_option.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace bitlux::gui {

namespace {

constexpr int lineCharacters = 58; ///< characters in a line of a long text, about
constexpr int leastCharacters = 24;
constexpr int betweenColumns = 16;
constexpr int wraps = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;

} // namespace

ColumnPlaces::ColumnPlaces(QStringList heads, const QFontMetrics& metrics)
    : heads_(std::move(heads)) {
    for (const QString& head : heads_)
        widths_.push_back(metrics.horizontalAdvance(head) + betweenColumns);
}

int ColumnPlaces::left(qsizetype column) const {
    return std::accumulate(widths_.begin(), widths_.begin() + column, 0);
}

void ChoiceOption::setColumns(const ColumnPlaces& columns) {
    columns_ = columns;
    QStringList described;
    const QStringList shown = words();
    for (qsizetype i = 0; i < std::min(shown.size(), columns.heads().size()); ++i)
        described << columns.heads()[i] + " " + shown[i];
    setAccessibleName(described.join(", "));
}

int ChoiceOption::indent() const {
    QStyleOptionButton option;
    initStyleOption(&option);
    option.rect = {0, 0, 1000, QRadioButton::sizeHint().height()}; // any width will do
    return style()->subElementRect(QStyle::SE_RadioButtonContents, &option, this).left();
}

int ChoiceOption::naturalWidth() const {
    return columns_ ? 0 : QRadioButton::sizeHint().width();
}

int ChoiceOption::longestLine() const {
    return indent() + lineCharacters * fontMetrics().averageCharWidth();
}

QRect ChoiceOption::textIn(int width) const {
    return fontMetrics().boundingRect(QRect(0, 0, width - indent(), QWIDGETSIZE_MAX), wraps,
                                      text());
}

QSize ChoiceOption::sizeHint() const {
    const QSize natural = QRadioButton::sizeHint();
    if (columns_)
        return {indent() + columns_->width(), natural.height()};
    const int longest = longestLine();
    if (natural.width() <= longest)
        return natural;
    return {indent() + textIn(longest).width() + 2, heightForWidth(longest)};
}

QSize ChoiceOption::minimumSizeHint() const {
    if (!hasHeightForWidth())
        return sizeHint();
    const int least = indent() + leastCharacters * fontMetrics().averageCharWidth();
    return {least, QRadioButton::sizeHint().height()};
}

int ChoiceOption::heightForWidth(int width) const {
    const int single = QRadioButton::sizeHint().height();
    return std::max(single, single - fontMetrics().height() + textIn(width).height());
}

void ChoiceOption::paintEvent(QPaintEvent* event) {
    if (!columns_ && QRadioButton::sizeHint().width() <= width()) {
        QRadioButton::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    const int line = QRadioButton::sizeHint().height();
    option.rect.setHeight(line);
    option.state.setFlag(QStyle::State_HasFocus, false);
    painter.drawControl(QStyle::CE_RadioButton, option);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(indent() - 2, 0, 0, 0);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
    const int top = (line - fontMetrics().height()) / 2;
    const QRect place = rect().adjusted(indent(), top, 0, 0);
    const auto draw = [&](const QRect& where, const QString& words) {
        painter.drawItemText(where, wraps, palette(), isEnabled(), words, QPalette::WindowText);
    };
    if (!columns_) {
        draw(place, text());
        return;
    }
    const QStringList shown = words();
    for (qsizetype i = 0; i < shown.size(); ++i)
        draw(place.adjusted(columns_->left(std::min(i, columns_->heads().size())), 0, 0, 0),
             shown[i]);
}

ColumnHeads::ColumnHeads(ColumnPlaces columns, int indent, QWidget* parent)
    : QWidget(parent), columns_(std::move(columns)), indent_(indent) {}

QSize ColumnHeads::sizeHint() const {
    return {indent_ + columns_.width(), fontMetrics().height() + 2};
}

void ColumnHeads::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    for (qsizetype i = 0; i < columns_.heads().size(); ++i)
        painter.drawText(rect().adjusted(indent_ + columns_.left(i), 0, 0, 0),
                         Qt::AlignLeft | Qt::AlignVCenter, columns_.heads()[i]);
}

} // namespace bitlux::gui
