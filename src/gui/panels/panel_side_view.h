#pragma once

#include "gui/panels/panel_extras.h"
#include "gui/panels/panel_places.h"
#include "gui/panels/sheet.h"

namespace bitlux::gui {

/// The column beside all pages of a panel whose file puts views there: the status of the last
/// answer, the views with their buttons, the buttons that read at once, and the extras of the
/// parts.
class PanelSideView : public Sheet {
public:
    PanelSideView(PanelForm& form, const PanelExtras& extras, const PanelWidgets& widgets,
                  QWidget* parent);

private:
    QWidget* makeReads();
    void addStatus(QVBoxLayout& column);
    void addView(const PlacedView& placed, QVBoxLayout& column);
    void addRow(QBoxLayout& line, const QString& title, const std::vector<QWidget*>& buttons,
                BitRow& bits);
    void alignRows();

    PanelForm& form_;
    PanelWidgets widgets_;
    std::vector<QWidget*> titles_;
    std::vector<BitRow*> rows_;
};

} // namespace bitlux::gui
