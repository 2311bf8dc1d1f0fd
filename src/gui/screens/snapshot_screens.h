#pragma once

#include "bench/scripted_desk.h"
#include "panels/common/panel_form.h"

#include <QString>

class QWidget;

namespace bitlux::gui {

class MainWindow;

/// Pictures of a panel after a comparison in which some bits differ, of the window that lists them,
/// and of the menu. Each file is named `prefix`, a state, and `tail`.
void paintSnapshots(MainWindow& window, QWidget& panel, PanelForm& form, ScriptedDesk& desk,
                    const QString& prefix, const QString& tail);

} // namespace bitlux::gui
