#pragma once

#include <QLabel>

namespace bitlux::gui {

/// A line of plain text that may be narrower than its text: the end is elided, and the tooltip
/// shows the whole text.
class ElidedLabel : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace bitlux::gui
