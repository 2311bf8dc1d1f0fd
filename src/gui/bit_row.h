#pragma once

#include "gui/binder.h"

#include <span>
#include <vector>

#include <QLabel>

namespace bitlux::gui {

/// A bit as a cell of a register's row: its number above its caption, lit by the back colour of
/// the label that it is tied to.
class BitCell : public QLabel {
public:
    BitCell(int bit, bool clickable, QWidget* parent);

    /// A field begins here, from the left.
    void setFieldTop(bool top) { isFieldTop_ = top; }

    /// Arrow keys lead to these.
    void setNeighbours(BitCell* left, BitCell* right);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void paintEdges(QPainter& painter) const;

    int bit_;
    bool isFieldTop_ = false;
    BitCell* left_ = nullptr;
    BitCell* right_ = nullptr;
};

/// The bits of a word side by side, the highest on the left, and its hexadecimal value behind them.
/// Only one cell is on the way of the Tab key.
class BitRow : public QWidget {
public:
    enum class Use { Shown, Clicked };

    /// `labels` from bit 0 on. Less than a byte of them stand where they stand in a byte.
    BitRow(std::span<forms::Label* const> labels, Use use, Binder& binder, QWidget* parent);

    /// Parts the fields: bit i of `tops` tells that a field begins with cell i, from the left.
    void markFields(unsigned tops);

private:
    void showValue();

    std::vector<forms::Label*> labels_;
    std::vector<BitCell*> cells_;
    QLabel* value_;
    Subscription flushed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
