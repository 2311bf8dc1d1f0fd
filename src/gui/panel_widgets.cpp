#include "gui/panel_widgets.h"

namespace bitlux::gui {

RowButton* PanelWidgets::rowButton(const oldchips::ControlName& name, QWidget* parent,
                                   const QString& about) const {
    auto* made = make<RowButton, forms::Button>(name, parent);
    const bool appends = made->text().startsWith('>');
    const QString tells = appends && !made->toolTip().isEmpty() ? made->toolTip() : about;
    if (!tells.isEmpty())
        made->setAccessibleName(made->text() + " " + tells);
    return made;
}

} // namespace bitlux::gui
