#pragma once

#include <QPushButton>

namespace bitlux::gui {

/// A button as wide as all others of its column: a caption that is too long is shown in two lines.
class RowButton : public QPushButton {
public:
    explicit RowButton(QWidget* parent) : QPushButton(parent) { setAutoDefault(false); }

    /// The size for this text; for its own caption when it is empty.
    void setRoomFor(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void initStyleOption(QStyleOptionButton* option) const override;

private:
    [[nodiscard]] int roomWidth() const;
    [[nodiscard]] QString shownText() const;

    QString room_;
};

} // namespace bitlux::gui
