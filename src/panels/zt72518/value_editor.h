#pragma once

#include "panels/common/panel_part.h"

namespace bitlux::zt72518 {

/// Edits the value of the selected line: as a text, or as one of the times of the watchdog.
class ValueEditor : public PanelPart {
public:
    explicit ValueEditor(const PanelContext& context);

    /// "Change Value": what was edited becomes the value of the selected line.
    void changeValue();

private:
    void List_Value_Click();

    SequenceLists& lists_;
    forms::TextBox& text_;
    forms::ComboBox& time_; ///< visible while the line has a time
};

} // namespace bitlux::zt72518
