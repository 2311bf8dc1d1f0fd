#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the page of the ZT72517 with a model of the chip: without a dongle, with flags and a
/// failure of the bus, and in a small window. Each file is named `prefix`, a state, and `tail`.
void paintZt72517(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
