#pragma once

#include "platform/desk.h"
#include "platform/forms/form_set.h"
#include "program/word_names.h"
#include "waveform/decoded_log.h"

namespace bitlux {

/// The second view of the Session Log: the words that were sent since it was cleared, by the names
/// of a chip.
class DecodedWords {
public:
    /// All outlive it.
    DecodedWords(const WordEngine& engine, const WordNames::Parts& parts, const Desk& desk)
        : names_(parts), log_(engine), forms_(parts.forms), desk_(desk) {}

    [[nodiscard]] WordNames& names() { return names_; }
    /// Decoded by the chip that counts now.
    [[nodiscard]] DecodedLog& log();
    /// Asks for the name of a file and saves the table there; a box shows a failure.
    void saveCsvAs();

private:
    WordNames names_;
    DecodedLog log_;
    forms::FormSet& forms_;
    const Desk& desk_;
};

} // namespace bitlux
