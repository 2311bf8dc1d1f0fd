#pragma once

#include "chips/zt72518/flags.h"
#include "gui/panel_widgets.h"

#include <QGridLayout>
#include <QWidget>

namespace bitlux::gui {

/// The page of flags: a row of bits for each word that reads some.
class FlagsView : public QWidget {
public:
    FlagsView(const PanelWidgets& widgets, QWidget* parent);

private:
    void addTitle(const QString& text);
    void addRow(const oldchips::zt72518::FlagRow& row, const oldchips::ControlName& read,
                const oldchips::ControlName& append);

    PanelWidgets widgets_;
    QGridLayout* grid_;
};

} // namespace bitlux::gui
