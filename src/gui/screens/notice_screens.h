#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the window with each notice in its status line, also in a small window. Each file is
/// named `prefix`, a state, and `tail`.
void paintNotices(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
