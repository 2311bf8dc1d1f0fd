#pragma once

#include <QLabel>

namespace bitlux::gui {

/// A label of digits that can mark those that changed: its text is plain, the marks are painted
/// after it. Digits are compared from the right, the least significant end.
class DigitsLabel : public QLabel {
public:
    explicit DigitsLabel(QWidget* parent = nullptr);

    /// Marks the digits that differ from those of the last call.
    void markChanges();

    [[nodiscard]] const QString& marks() const { return marks_; }
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    /// Offers to copy the digits.
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString before_;
    QString marks_; ///< '*' for a digit that changed; as long as the text
};

} // namespace bitlux::gui
