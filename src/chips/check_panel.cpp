#include "chips/findings.h"

#include <set>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

/// Each box has one use.
void checkBoxes(const AutomaticReads& reads, const Findings& found) {
    std::set<int> taken;
    const auto take = [&](int box) {
        const auto place = static_cast<std::size_t>(box);
        const bool isRead = place < reads.buttons.size() && reads.buttons[place].exists();
        if (isRead || !taken.insert(box).second)
            found.add(reads.at, fmt::format("box {} of the automatic reads has two uses", box),
                      "Give each its own; those of the reads are counted by `press`, from 0.");
    };
    for (const int box : reads.switches)
        take(box);
    for (const int box : reads.recorders)
        take(box);
    for (const AutomaticReads::Group& group : reads.groups)
        take(group.box);
}

} // namespace

void checkPanel(const Findings& found) {
    const AutomaticReads& reads = found.chip.automaticReads;
    if (!reads.exists())
        return;
    checkBoxes(reads, found);
    for (const ControlName& button : reads.buttons)
        if (button.exists() && found.census.kindOf(button) != ControlCensus::Kind::Button)
            found.add(reads.at, fmt::format("there is no button {}", text(button)),
                      found.census.nearText(button));
    for (const AutomaticReads::Group& group : reads.groups)
        for (const BitList* boxes : {&group.ticks, &group.clears})
            if (boxes->highest() > reads.last())
                found.add(reads.at, fmt::format("there is no box {}", boxes->highest()),
                          "Name boxes that are there.");
}

} // namespace bitlux::chips
