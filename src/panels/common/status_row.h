#pragma once

#include "panels/common/panel_controls.h"
#include "panels/common/panel_words.h"

namespace bitlux {

/// The row that shows the answer to the last word of a panel.
class StatusRow {
public:
    /// All outlive it.
    StatusRow(const chips::WordFormat& format, PanelControls& controls, PanelWords& words);

    /// Shows the bits of the last answer that `part` names; all of them when it names none.
    void show(const chips::BitList& part) const;

private:
    PanelWords& words_;
    const int first_;               ///< bit that the first label shows
    const LabelRow* row_ = nullptr; ///< null for a chip without one
};

} // namespace bitlux
