#include "chips/findings.h"

#include <algorithm>
#include <set>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

/// Each box has a single use.
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

/// Every box that is referred to must exist.
void checkNumbers(const AutomaticReads& reads, const Findings& found) {
    int highest = reads.lost.highest();
    for (const AutomaticReads::Group& group : reads.groups)
        highest = std::max({highest, group.ticks.highest(), group.clears.highest()});
    for (const AutomaticReads::Note& note : reads.notes)
        highest = std::max(highest, note.box);
    if (highest > reads.last())
        found.add(reads.at, fmt::format("there is no box {}", highest),
                  "Name boxes that are there.");
}

void checkSequence(const SequenceStyle& style, const Findings& found) {
    if (style.editor.exists() && style.editor.box == style.trigger.box)
        found.add(style.at, "the value that is edited and the trigger line have one box",
                  "Give each its own `box`.");
    const bool namesControls =
        style.editor.list.exists() || style.editor.button.exists() || style.trigger.label.exists();
    if (namesControls && found.chip.panel.parts.empty())
        found.add(style.at, "there is no part that has the controls of `editor` and `trigger`",
                  "Leave `list`, `button` and `label` out.");
}

} // namespace

void checkPanel(const Findings& found) {
    checkSequence(found.chip.sequence, found);
    const AutomaticReads& reads = found.chip.automaticReads;
    if (!reads.exists())
        return;
    checkBoxes(reads, found);
    for (const ControlName& button : reads.buttons)
        if (button.exists() && found.census.kindOf(button) != ControlCensus::Kind::Button)
            found.add(reads.at, fmt::format("there is no button {}", text(button)),
                      found.census.nearText(button));
    checkNumbers(reads, found);
}

} // namespace bitlux::chips
