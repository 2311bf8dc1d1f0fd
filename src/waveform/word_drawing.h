#pragma once

#include "waveform/waveform.h"

namespace bitlux {

/// Fills a waveform from the accesses to the port.
void drawPortWord(const WordRecord& record, Waveform& waveform);

/// Fills it from the frame and its answer.
void drawCommandedWord(const WordRecord& record, Waveform& waveform);

} // namespace bitlux
