#pragma once

#include "gui/panels/panel_extras.h"
#include "gui/panels/panel_places.h"

#include <QWidget>

namespace bitlux::gui {

class GroupFlow;

/// The rows above all pages of a panel: the variant, the last word, and, where nothing is beside
/// the pages, the last answer and the buttons that read at once.
class PanelStatusView : public QWidget {
public:
    PanelStatusView(PanelForm& form, const PanelExtras& extras, const PanelWidgets& widgets,
                    QWidget* parent);

private:
    /// The bits of the last answer; those of a long word in lines labelled with their bits.
    QLayout* makeStatus();
    QWidget* makeVariants(const PanelExtras& extras);
    QWidget* makeTexts();
    void addWord(const chips::Sheet::Row& shown, QHBoxLayout& row, QWidget* parent);
    /// A note that no word can be sent, while that is so.
    QWidget* makeOrderNote();
    QWidget* makeReads(const Actions& actions, const PanelExtras& extras);
    QWidget* makeGroup(const std::string& group, const Actions& actions, QWidget* parent);

    PanelForm& form_;
    PanelWidgets widgets_;
    Subscription flushed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
