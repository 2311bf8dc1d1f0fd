#pragma once

#include "panels/common/panel_words.h"

#include <QLabel>

namespace bitlux::gui {

/// The word that a panel, or a form beside it, sent last, and its answer.
class LastWord : public QLabel {
public:
    /// `words` outlives it.
    LastWord(PanelWords& words, QWidget* parent);

private:
    Subscription exchanged_;
};

} // namespace bitlux::gui
