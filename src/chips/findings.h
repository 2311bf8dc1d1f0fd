#pragma once

#include "chips/control_census.h"
#include "chips/description.h"

#include <string>
#include <utility>

namespace bitlux::chips {

/// The input of the checks of a description, and their result.
struct Findings {
    const Chip& chip;
    const ControlCensus& census;
    Problems& problems;

    void add(const Place& at, std::string text, std::string advice) const {
        problems.push_back({at, std::move(text), std::move(advice)});
    }
};

/// The format of the words, its check and the words of commands.
void checkWords(const Findings& found);
/// Registers one by one: addresses, widths, fields, views.
void checkRegisters(const Findings& found);
/// Requests that a chip could not distinguish. To be called when the words are valid.
void checkOverlaps(const Findings& found);
/// Devices of the virtual bench, and the reset values of devices and views.
void checkDevices(const Findings& found);
/// Automatic reads, and references to them.
void checkPanel(const Findings& found);
/// Titles, lines of a sequence, and references to them.
void checkNames(const Findings& found);

} // namespace bitlux::chips
