#pragma once

#include "gui/panels/panel_extras.h"
#include "gui/widgets/form_dialog.h"

namespace bitlux::gui {

/// The controls of a range, in order. Raises UnknownName for one that the form does not have.
[[nodiscard]] std::vector<forms::Control*> controlsIn(const chips::ControlRange& range,
                                                      forms::Form& form);

/// The groups of a sheet that a chip's file describes, in their columns. Raises UnknownName for a
/// control that the form does not have.
[[nodiscard]] QWidget* makeSheet(const chips::Sheet& sheet, forms::Form& form, Binder& binder,
                                 QWidget* parent);

/// Pages of the panel that are sheets, and groups of sheets on pages of registers.
void addSheetExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

/// The window of a form beside a panel that is a sheet. Closing it hides the form.
class SheetView : public FormDialog {
public:
    SheetView(forms::Form& form, const chips::Sheet& sheet, Binder& binder, QWidget* parent);
};

} // namespace bitlux::gui
