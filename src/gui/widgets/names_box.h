#pragma once

#include "program/word_names.h"

#include <QComboBox>

namespace bitlux::gui {

/// By the names of which chip words are told: of the one that the user works with, or of one that
/// is picked. The choice is the same wherever it is shown.
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
