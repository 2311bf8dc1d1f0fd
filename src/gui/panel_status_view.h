#pragma once

#include "gui/panel_extras.h"

#include <QWidget>

namespace bitlux::gui {

class GroupFlow;

/// What stands above all pages of a panel: the variant, the last answer, the last word, and what
/// reads at once.
class PanelStatusView : public QWidget {
public:
    PanelStatusView(PanelForm& form, const PanelExtras& extras, const PanelWidgets& widgets,
                    QWidget* parent);

private:
    QWidget* makeVariants(const PanelExtras& extras);
    QWidget* makeTexts(const PanelExtras& extras);
    QWidget* makeReads(const PanelExtras& extras);
    /// The buttons of one heading: those that press others, then commands.
    QWidget* makeGroup(const std::string& group, QWidget* parent);
    [[nodiscard]] std::vector<std::string> groups() const;

    PanelForm& form_;
    PanelWidgets widgets_;
};

} // namespace bitlux::gui
