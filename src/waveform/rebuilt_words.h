#pragma once

#include "transfer/sent_words.h"
#include "waveform/word_record.h"

#include <memory>
#include <vector>

namespace bitlux {

/// Records of words of which only what they were made of is kept: the accesses are those that the
/// word engine made, spread evenly over the time that the word took.
std::vector<WordRecord> rebuiltRecords(const std::vector<SentWord>& words,
                                       const std::shared_ptr<const ExtraPinNames>& extraPins);

} // namespace bitlux
