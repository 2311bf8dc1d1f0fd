#include "gui/panels/row_button.h"

#include <cmath>

#include <QStyleOptionButton>

namespace bitlux::gui {

namespace {

constexpr int sideMargin = 14; ///< pixels
constexpr int above = 8;

} // namespace

void RowButton::setRoomFor(const QString& text) {
    room_ = text;
    updateGeometry();
}

int RowButton::roomWidth() const {
    return fontMetrics().horizontalAdvance(room_.isEmpty() ? text() : room_);
}

QSize RowButton::sizeHint() const {
    const int lines = static_cast<int>(shownText().count('\n')) + 1;
    return {roomWidth() + sideMargin, lines * fontMetrics().height() + above};
}

QString RowButton::shownText() const {
    QString shown = text();
    if (fontMetrics().horizontalAdvance(shown) <= roomWidth())
        return shown;
    const auto middle = shown.size() / 2;
    qsizetype best = -1; // the blank nearest to the middle
    for (auto blank = shown.indexOf(' '); blank >= 0; blank = shown.indexOf(' ', blank + 1))
        if (best < 0 || std::abs(blank - middle) < std::abs(best - middle))
            best = blank;
    if (best >= 0)
        shown[best] = '\n';
    return shown;
}

void RowButton::initStyleOption(QStyleOptionButton* option) const {
    QPushButton::initStyleOption(option);
    option->text = shownText();
}

} // namespace bitlux::gui
