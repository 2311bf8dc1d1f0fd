#pragma once

#include "gui/panel_widgets.h"
#include "panels/zt72518/panel_form.h"

#include <QWidget>

namespace bitlux::gui {

/// What stands above all pages of the panel: the last answer, the variant, and reading at once.
class PanelStatusView : public QWidget {
public:
    PanelStatusView(zt72518::PanelForm& form, const PanelWidgets& widgets, QWidget* parent);

private:
    QWidget* makeTexts();
    QWidget* makeVariants();
    QWidget* makeReads();

    zt72518::PanelForm& form_;
    PanelWidgets widgets_;
};

} // namespace bitlux::gui
