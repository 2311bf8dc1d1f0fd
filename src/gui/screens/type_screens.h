#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the diagrams of all eight SPI types, in a usual size and in the smallest one. Each
/// file is named `prefix`, a state, and `tail`.
void paintTypes(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
