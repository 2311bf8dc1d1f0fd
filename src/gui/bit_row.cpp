#include "gui/bit_row.h"

#include "gui/theme.h"
#include "platform/forms/form.h"
#include "platform/forms/form_set.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

namespace bitlux::gui {

namespace {

constexpr int cellWidth = 11; ///< in characters
constexpr int lines = 2;
constexpr int gap = 3;
constexpr qreal numberScale = 0.75;
constexpr qreal captionScale = 0.85;

} // namespace

BitCell::BitCell(int bit, bool clickable, QWidget* parent) : QLabel(parent), bit_(bit) {
    setFont(scaled(QApplication::font(), captionScale));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (clickable) {
        setFocusPolicy(Qt::ClickFocus);
        setCursor(Qt::PointingHandCursor);
    }
}

void BitCell::setNeighbours(BitCell* left, BitCell* right) {
    left_ = left;
    right_ = right;
}

QSize BitCell::sizeHint() const {
    const QFontMetrics number(scaled(font(), numberScale / captionScale));
    return {cellWidth * fontMetrics().averageCharWidth(),
            number.height() + lines * (fontMetrics().height() + 2) + 2 * gap};
}

QSize BitCell::minimumSizeHint() const {
    return {sizeHint().width() / 2, sizeHint().height()};
}

void BitCell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool carries = text() != "-" && isEnabled();
    // A label that is lit has a colour of its own; the ink goes with it.
    QColor ink =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    painter.fillRect(rect(),
                     (isEnabled() ? palette() : QApplication::palette()).color(QPalette::Window));
    QColor faint = ink;
    faint.setAlphaF(0.55F);
    painter.setPen(faint);
    const QRect inner = rect().adjusted(gap, gap, -gap, -gap);
    const QFont number = scaled(font(), numberScale / captionScale);
    painter.setFont(number);
    painter.drawText(inner, Qt::AlignHCenter | Qt::AlignTop, QString::number(bit_));
    painter.setFont(font());
    painter.setPen(carries ? ink : faint);
    const QRect caption = inner.adjusted(0, QFontMetrics(number).height(), 0, 0);
    // Several words may be parted between them, a long one behind a line.
    QString shown = text().simplified();
    if (!shown.contains(' '))
        shown.replace("_", QString("_") + QChar(0x200B));
    painter.drawText(caption, Qt::AlignCenter | Qt::TextWordWrap, shown);
    paintEdges(painter);
}

void BitCell::paintEdges(QPainter& painter) const {
    constexpr float faint = 0.25F;
    constexpr float strong = 0.5F;
    QColor edge = palette().color(QPalette::Active, QPalette::WindowText); // goes with the ground
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

BitRow::BitRow(std::span<forms::Label* const> labels, Use use, Binder& binder, QWidget* parent)
    : QWidget(parent), labels_(labels.begin(), labels.end()), value_(new QLabel(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    constexpr int byteBits = 8;
    if (const int missing = byteBits - static_cast<int>(labels.size()); missing > 0)
        row->addStretch(missing);
    cells_.resize(labels.size());
    for (std::size_t i = labels.size(); i-- > 0;) {
        auto* cell = new BitCell(static_cast<int>(i), use == Use::Clicked, this);
        binder.bind(*labels[i], *cell);
        cell->setAccessibleName(QString("bit %1 %2").arg(i).arg(cell->text()));
        row->addWidget(cell, 1);
        cells_[i] = cell;
    }
    for (std::size_t i = 0; i < cells_.size(); ++i)
        cells_[i]->setNeighbours(i + 1 < cells_.size() ? cells_[i + 1] : nullptr,
                                 i > 0 ? cells_[i - 1] : nullptr);
    if (use == Use::Clicked)
        cells_.back()->setFocusPolicy(Qt::StrongFocus);
    value_->setFont(fixedFont());
    value_->setMinimumWidth(value_->fontMetrics().horizontalAdvance("0x00000"));
    value_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value_->setAlignment(Qt::AlignCenter);
    row->addWidget(value_);
    flushed_ = binder.flushed.follow([this] { showValue(); });
    formGoing_ = labels.front()->form().set().formGoing.follow([this](forms::Form& going) {
        if (!labels_.empty() && &going == &labels_.front()->form())
            labels_.clear();
    });
    showValue();
}

void BitRow::markFields(unsigned tops) {
    for (std::size_t i = 0; i + 1 < cells_.size(); ++i) // the row begins with the last
        cells_[i]->setFieldTop((tops >> i & 1) != 0);
}

void BitRow::showValue() {
    if (labels_.empty())
        return;
    unsigned value = 0;
    for (std::size_t i = 0; i < labels_.size(); ++i)
        if (labels_[i]->backColor() != forms::windowColor)
            value |= 1U << i;
    const int digits = (static_cast<int>(labels_.size()) + 3) / 4;
    const QString text = "0x" + QString::number(value, 16).toUpper().rightJustified(digits, '0');
    if (value_->text() != text)
        value_->setText(text);
}

} // namespace bitlux::gui
