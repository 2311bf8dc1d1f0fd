#pragma once

#include <QString>

namespace bitlux::gui {

/// The window and the bench with an adapter as the bus, and the dialog in which it is chosen.
void paintAdapter(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
