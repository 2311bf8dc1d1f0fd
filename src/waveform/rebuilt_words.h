#pragma once

#include "transfer/sent_words.h"
#include "waveform/word_record.h"

#include <memory>
#include <vector>

namespace bitlux {

/// Records of words of which only the data is kept: the accesses are those of the word engine,
/// spread evenly over the duration of the word.
std::vector<WordRecord> rebuiltRecords(const std::vector<SentWord>& words,
                                       const std::shared_ptr<const ExtraPinNames>& extraPins);

} // namespace bitlux
