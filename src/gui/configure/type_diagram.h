#pragma once

#include "gui/configure/type_picture.h"

namespace bitlux::gui {

/// What the diagram needs to know of the word beside its type.
struct WordLook {
    bool msbFirst = true;
    bool selectedWhenHigh = false;
};

/// The timing diagram of an SPI type (1 to 8), drawn from the table of clocking types, with data
/// lines of the default polarity. It scales with its width and follows font and palette.
class TypeDiagram : public QWidget {
public:
    explicit TypeDiagram(int spiType, QWidget* parent = nullptr);

    void setType(int spiType, WordLook look);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TypePicture::Content content_;
};

} // namespace bitlux::gui
