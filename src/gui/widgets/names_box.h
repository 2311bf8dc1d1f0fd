#pragma once

#include "program/word_names.h"

#include <QComboBox>

namespace bitlux::gui {

/// Selects the chip whose names decode words: the one that the user works with, or one that is
/// picked. All boxes show the same choice.
class NamesBox : public QComboBox {
public:
    /// `names` outlives it.
    NamesBox(WordNames& names, QWidget* parent);

    /// The chip that the user works with may be another one now.
    void follow();

    void showPopup() override;

private:
    void fill();

    WordNames& names_;
    Subscription changed_;
};

} // namespace bitlux::gui
