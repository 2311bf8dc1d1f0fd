#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the panel of the ZT7251x family and of its test mode, with a model of the chip: all
/// pages in several sizes, and a sequence that runs. Each file is named `prefix`, a state, and
/// `tail`.
void paintZt72518(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
