#include "chips/validate.h"

#include "chips/findings.h"

namespace bitlux::chips {

Problems validate(const Chip& chip) {
    Problems problems;
    const ControlCensus census(chip, problems);
    const Findings found{.chip = chip, .census = census, .problems = problems};
    if (chip.registers.empty() && chip.commands.empty())
        found.add({.line = 1, .column = 1}, "the chip has neither registers nor commands",
                  "Describe at least one with `[[register]]` or `[[command]]`.");
    const std::size_t before = problems.size();
    checkWords(found);
    const bool wordsAreRight = problems.size() == before;
    checkRegisters(found);
    if (wordsAreRight)
        checkOverlaps(found);
    checkDevices(found);
    checkNames(found);
    checkPanel(found);
    return problems;
}

} // namespace bitlux::chips
