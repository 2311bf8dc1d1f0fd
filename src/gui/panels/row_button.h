#pragma once

#include <QPushButton>

namespace bitlux::gui {

/// A button that is as wide as all others of its column: a caption that is too long for it stands
/// in two lines.
class RowButton : public QPushButton {
public:
    explicit RowButton(QWidget* parent) : QPushButton(parent) { setAutoDefault(false); }

    /// Room for this text; for the own caption when it is empty.
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
