#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the main window in its main states, of its dialogs, and of the help. Each file is
/// named `folder`, a state, and `tail`.
void paintMain(const QString& folder, const QString& tail);

} // namespace bitlux::gui
