#include "gui/panels/bit_row.h"

#include "gui/desktop/theme.h"
#include "gui/panels/bit_lines.h"
#include "gui/widgets/label_behaviour.h"
#include "platform/forms/form.h"
#include "platform/forms/form_set.h"

#include <algorithm>

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

namespace bitlux::gui {

namespace {

constexpr int cellWidth = 11; ///< in characters
constexpr int leastCellWidth = 5;
constexpr int captionLines = 2;
constexpr int fullWidth = 100; ///< of letters, in percent
constexpr int narrow = 90;     // in two steps: each is a font to load
constexpr int narrowest = 80;
constexpr int cellGap = 3;
constexpr qreal numberScale = 0.75;
constexpr qreal captionScale = 0.85;
constexpr std::size_t cellsOfOneLine = 8;

/// What all cells with the same font share.
struct CellFont {
    explicit CellFont(const QFont& font)
        : caption(font),
          number(scaled(font, numberScale / captionScale)),
          numberHeight(QFontMetrics(number).height()),
          character(QFontMetrics(font).averageCharWidth()),
          hint(cellWidth * character,
               numberHeight + captionLines * (QFontMetrics(font).height() + 2) + 2 * cellGap) {}

    QFont caption;
    QFont number;
    int numberHeight;
    int character;
    QSize hint;
};

/// Nearly all cells have the same font.
const CellFont& cellFont(const QFont& font) {
    static std::optional<CellFont> last;
    if (!last)
        qAddPostRoutine([] { last.reset(); }); // no font outlives the application
    if (!last || last->caption != font)
        last.emplace(font);
    return *last;
}

/// A zero of this colour looks unlit.
bool isGround(std::uint32_t colour) {
    return colour == forms::windowColor || colour == forms::buttonFaceColor;
}

} // namespace

BitCell::BitCell(int bit, bool clickable, QWidget* parent) : QLabel(parent), bit_(bit) {
    setFont(scaled(QApplication::font(), captionScale));
    measure();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    if (clickable) {
        setFocusPolicy(Qt::ClickFocus);
        setCursor(Qt::PointingHandCursor);
    }
}

void BitCell::showValue(bool one) {
    if (shownValue_ == one)
        return;
    shownValue_ = one;
    update();
}

void BitCell::setMarked(bool marked) {
    if (isMarked_ == marked)
        return;
    isMarked_ = marked;
    updateName();
    update();
}

void BitCell::nameAfterCaption() {
    if (named_ == text() && !accessibleName().isNull())
        return;
    named_ = text();
    updateName();
}

void BitCell::updateName() {
    QString name = QStringLiteral("bit ");
    name += QString::number(bit_);
    name += u' ';
    name += named_;
    if (isMarked_)
        name += QStringLiteral(", differs");
    setAccessibleName(name);
}

void BitCell::setNeighbours(BitCell* left, BitCell* right) {
    left_ = left;
    right_ = right;
}

QString BitCell::breakable() const {
    QString shown = text().simplified();
    if (!shown.contains(' '))
        shown.replace("_", QString("_") + QChar(0x200B));
    return shown;
}

int BitCell::longestPart() const {
    if (measured_ == text() && longest_ > 0)
        return longest_;
    measured_ = text();
    longest_ = 0;
    for (const QString& part : breakable().replace(QChar(0x200B), ' ').split(' '))
        longest_ = std::max(longest_, fontMetrics().horizontalAdvance(part));
    return longest_;
}

void BitCell::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange)
        measure();
    QLabel::changeEvent(event);
}

void BitCell::measure() {
    const CellFont& fonts = cellFont(font());
    numberFont_ = fonts.number;
    numberHeight_ = fonts.numberHeight;
    character_ = fonts.character;
    hint_ = fonts.hint;
    longest_ = 0;
}

int BitCell::readableWidth() const {
    const int least = leastCellWidth * character_;
    const int needed = longestPart() * narrowest / fullWidth + 1;
    return std::min(std::max(least, needed) + 2 * cellGap, sizeHint().width());
}

int BitCell::stretchIn(int width) const {
    const int longest = longestPart();
    if (longest <= width)
        return fullWidth;
    return longest * narrow <= width * fullWidth ? narrow : narrowest;
}

int BitCell::heightForWidth(int width) const {
    const QString caption = breakable();
    if (caption.count(' ') + caption.count(QChar(0x200B)) < captionLines)
        return hint_.height();
    const int room = width - 2 * cellGap;
    // Narrow letters wrap at a smaller width than full ones.
    const QRect wanted =
        fontMetrics().boundingRect(QRect(0, 0, room * fullWidth / stretchIn(room), QWIDGETSIZE_MAX),
                                   Qt::TextWordWrap, caption);
    return hint_.height() +
           std::max(wanted.height() - captionLines * (fontMetrics().height() + 2), 0);
}

void BitCell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool carries = text() != "-" && isEnabled();
    // A lit label has a colour of its own, and the ink must contrast with it.
    QColor ink =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    painter.fillRect(rect(),
                     (isEnabled() ? palette() : QApplication::palette()).color(QPalette::Window));
    QColor faint = ink;
    faint.setAlphaF(0.55F);
    painter.setPen(shownValue_ ? ink : faint);
    const QRect inner = rect().adjusted(cellGap, cellGap, -cellGap, -cellGap);
    painter.setFont(numberFont_);
    const QString value = shownValue_ ? (*shownValue_ ? " = 1" : " = 0") : "";
    painter.drawText(inner, Qt::AlignHCenter | Qt::AlignTop, QString::number(bit_) + value);
    QFont letters = font();
    if (const int stretch = stretchIn(inner.width()); stretch < fullWidth)
        letters.setStretch(stretch);
    painter.setFont(letters);
    painter.setPen(carries ? ink : faint);
    const QRect caption = inner.adjusted(0, numberHeight_, 0, 0);
    painter.drawText(caption, Qt::AlignCenter | Qt::TextWordWrap, breakable());
    paintEdges(painter);
    if (isMarked_)
        paintMark(painter);
}

/// In the ink of the cell: a corner that is filled, and a thick line below.
void BitCell::paintMark(QPainter& painter) const {
    constexpr int line = 3;
    const int corner = numberHeight_ * 2 / 3;
    const QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(QPolygon({{width() - corner, 0}, {width(), 0}, {width(), corner}}));
    painter.drawRect(QRect(0, height() - line, width(), line));
}

void BitCell::paintEdges(QPainter& painter) const {
    constexpr float faint = 0.25F;
    constexpr float strong = 0.5F;
    QColor edge = palette().color(QPalette::Active, QPalette::WindowText); // has contrast
    edge.setAlphaF(faint);
    painter.setPen(edge);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    if (isFieldTop_) {
        edge.setAlphaF(isEnabled() ? strong : faint);
        painter.fillRect(QRect(0, 0, 2, height()), edge);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
}

void BitCell::keyPressEvent(QKeyEvent* event) {
    BitCell* const next = event->key() == Qt::Key_Left    ? left_
                          : event->key() == Qt::Key_Right ? right_
                                                          : nullptr;
    if (next != nullptr)
        next->setFocus(Qt::OtherFocusReason);
    else
        QLabel::keyPressEvent(event);
}

BitRow::BitRow(const LabelRow& row, Use use, Binder& binder, QWidget* parent)
    : QWidget(parent),
      row_(row),
      lines_(new BitLines),
      value_(new QLabel(this)),
      isTwoColoured_(!isGround(row.colours().zero)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(lines_, 1);
    makeCells(use, binder);
    value_->setFont(fixedFont());
    const QString widest(std::max(row.size() / 4 + 3, 7), '0'); // at least as wide as for a byte
    value_->setMinimumWidth(value_->fontMetrics().horizontalAdvance(widest));
    value_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value_->setAlignment(Qt::AlignCenter);
    layout->addWidget(value_);
    flushed_ = binder.flushed.follow([this] { showValue(); });
    forms::Form& form = row.label(0).form();
    formGoing_ = form.set().formGoing.follow([this, &form](forms::Form& going) {
        if (&going == &form)
            row_.reset();
    });
    showValue();
}

void BitRow::makeCells(Use use, Binder& binder) {
    cells_.resize(row_->labels().size());
    for (std::size_t i = cells_.size(); i-- > 0;) {
        auto* cell = new BitCell(static_cast<int>(i), use == Use::Clicked, this);
        binder.bind(*row_->labels()[i], *cell);
        LabelBehaviour::of(*cell)->setBitOfRow();
        lines_->addWidget(cell);
        cells_[i] = cell;
    }
    for (std::size_t i = 0; i < cells_.size(); ++i)
        cells_[i]->setNeighbours(i + 1 < cells_.size() ? cells_[i + 1] : nullptr,
                                 i > 0 ? cells_[i - 1] : nullptr);
    if (use == Use::Clicked)
        cells_.back()->setFocusPolicy(Qt::StrongFocus);
    measureCells();
}

void BitRow::measureCells() {
    int least = cells_.front()->minimumSizeHint().width();
    if (cells_.size() > cellsOfOneLine) // else there is always one line
        least = std::max(least, readableCellWidth());
    lines_->setLeastWidth(least);
}

int BitRow::readableCellWidth() const {
    int width = 0;
    for (const BitCell* cell : cells_)
        width = std::max(width, cell->readableWidth());
    return width;
}

int BitRow::leastCellWidth() const {
    return lines_->leastWidth();
}

void BitRow::setLeastCellWidth(int width) {
    lines_->setLeastWidth(width);
}

void BitRow::setLongestLine(int bits) {
    lines_->setMostCells(bits);
}

void BitRow::numberFrom(int first) {
    for (int bit = first; BitCell * cell : cells_)
        cell->setNumber(bit++);
}

void BitRow::markFields(std::uint64_t tops) {
    for (std::size_t i = 0; i + 1 < cells_.size(); ++i) // the last is on the left
        cells_[i]->setFieldTop((tops >> i & 1) != 0);
}

void BitRow::showValue() {
    if (!row_)
        return;
    for (BitCell* cell : cells_)
        cell->nameAfterCaption();
    for (int bit = 0; bit < size(); ++bit) {
        BitCell& cell = *cells_[static_cast<std::size_t>(bit)];
        const bool one = row_->lit(bit);
        cell.setMarked(row_->label(bit).marked());
        LabelBehaviour::of(cell)->light(one);
        if (isTwoColoured_)
            cell.showValue(one);
    }
    const int digits = (row_->size() + 3) / 4;
    const QString text =
        "0x" + QString::number(row_->value(), 16).toUpper().rightJustified(digits, '0');
    if (value_->text() != text)
        value_->setText(text);
}

} // namespace bitlux::gui
