#pragma once

#include "gui/type_picture.h"

namespace bitlux::gui {

/// The timing diagram of one SPI type (1 to 8), drawn from the table of clocking types, with lines
/// of the default polarity. It scales with its width and follows font and palette.
class TypeDiagram : public QWidget {
public:
    explicit TypeDiagram(int spiType, QWidget* parent = nullptr);

    /// The most significant bit is first until told otherwise.
    void setType(int spiType, bool msbFirst);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TypePicture::Content content_;
};

} // namespace bitlux::gui
