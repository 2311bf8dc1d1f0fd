#pragma once

#include "gui/widgets/form_dialog.h"
#include "program/about_form.h"

namespace bitlux::gui {

/// The window of frmAbout.
class AboutView : public FormDialog {
public:
    AboutView(AboutForm& form, Binder& binder, QWidget* parent);
};

} // namespace bitlux::gui
