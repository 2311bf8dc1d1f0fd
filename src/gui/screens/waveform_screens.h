#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of words: of each type, and the window with its waveform, in its preferred size and
/// with 800 by 600. Each file is named `prefix`, a state, and `tail`.
void paintWaveforms(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
