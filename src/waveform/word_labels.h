#pragma once

#include "registers/word_decoder.h"
#include "waveform/waveform.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// The names beside a word in a picture of it.
struct WordLabels {
    /// Bits side by side that belong together, and what they say.
    struct Span {
        int high = 0;
        int low = 0;
        std::string text;
    };

    std::string title;       ///< of the register or command; empty when the word means nothing
    std::vector<Span> spans; ///< from the highest bit down
};

/// What was sent, as a number of at most 64 bits.
std::uint64_t sentNumber(const Waveform& word);
/// Names of what was sent; none for a word that has not the length of the chip's.
WordLabels labelsOfWord(const WordDecoder& decoder, const Waveform& word);
/// Names of what was received. `before` is what was sent with the word before, if there was one: a
/// chip that answers with the next word is answering that.
WordLabels labelsOfAnswer(const WordDecoder& decoder, const Waveform& word,
                          std::optional<std::uint64_t> before);

} // namespace bitlux
