#pragma once

#include <QLabel>

namespace bitlux::gui {

/// A line of plain text that gives way: what does not fit is left out, and the whole is its
/// tooltip.
class ElidedLabel : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace bitlux::gui
