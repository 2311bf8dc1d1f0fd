#pragma once

#include "chips/control_census.h"
#include "chips/description.h"

#include <string>
#include <utility>

namespace bitlux::chips {

/// What the checks of a description work with, and where they put what they find.
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
/// Requests that a chip could not tell from each other. To be called when the words are right.
void checkOverlaps(const Findings& found);
/// Devices of the virtual bench, and the reset values that they and views have.
void checkDevices(const Findings& found);
/// What repeats by itself, and what of that is named elsewhere.
void checkPanel(const Findings& found);
/// Titles, lines of a sequence, and whatever is named elsewhere.
void checkNames(const Findings& found);

} // namespace bitlux::chips
