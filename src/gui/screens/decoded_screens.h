#pragma once

#include <QString>

namespace bitlux::gui {

/// Pictures of the decoded log and of the names in the waveform; of the menu that copies words.
void paintDecoded(const QString& prefix, const QString& tail);

} // namespace bitlux::gui
