#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the panels whose words are bytes, the ZT72537 and the ZT72361, with models of the
/// chips, in their preferred size and on a small screen. Each file is named `folder`, the chip, a
/// state, and `tail`.
void paintBytePanels(const QString& folder, const QString& tail);

} // namespace bitlux::gui
