#pragma once

#include "panels/common/panel_part.h"

namespace bitlux {

/// Edits the value of the line that is selected: as a text, or chosen from a list for a value that
/// is one of its texts.
class ValueEditor : public PanelPart {
public:
    /// To be made after the parts whose controls the chip's file names for it.
    explicit ValueEditor(const PanelContext& context);

private:
    /// The edited text becomes the value of the selected line.
    void ChangeValue();
    void List_Value_Click();
    [[nodiscard]] bool isChosen(const std::string& value) const;

    SequenceLists& lists_;
    forms::TextBox& text_;
    forms::ComboBox* choice_ = nullptr; ///< visible while the line's value is one of its texts
};

} // namespace bitlux
