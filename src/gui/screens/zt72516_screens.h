#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the panel of the ZT72516 and of the forms beside it, with a model of the chip, in
/// their preferred size and on a small screen. Each file is named `prefix`, a state, and `tail`.
void paintZt72516(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
