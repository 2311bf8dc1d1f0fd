#include "panels/zt72518/diagram_page.h"

#include "platform/conversions.h"

#include <string>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::zt72518 {

namespace {

constexpr int readInterval = 250; // milliseconds
constexpr int diagramTab = 2;
constexpr const char* buttons = "Send_pre_prog";
constexpr const char* boxControls = "pre_prog_box";
constexpr const char* lines = "lin_pre";
constexpr ControlRef modeText{"read_pre_prog", 0};
constexpr ControlRef requestMode{"read_pre_prog", 1};

/// The words that a button can send.
std::string tooltipOf(const ModeButton& button) {
    std::vector<std::string> words;
    if (button.select)
        words = {fmt::format("0x{:04X}", readRandomWord),
                 fmt::format("0x{:02X}xx", specialModeWriteHigh)};
    for (const ModeWord& step : button.words)
        words.push_back(step.whenClear
                            ? fmt::format("0x{:04X} or 0x{:04X}", step.word, *step.whenClear)
                            : fmt::format("0x{:04X}", step.word));
    return fmt::format("{}", fmt::join(words, ", "));
}

} // namespace

DiagramPage::DiagramPage(const PanelContext& context)
    : controls_(context.controls),
      link_(context.part<ChipWords>()),
      timer_auto_pre(context.form, "timer_auto_pre", readInterval) {
    addControls();
    for (int i = 0; i < static_cast<int>(modeButtons.size()); ++i)
        controls_.onClick({buttons, i}, [this, i] { Send_pre_prog_Click(i); });
    controls_.onClick({boxControls, autoReadingBox},
                      [this] { timer_auto_pre.setEnabled(box(autoReadingBox).checked()); });
    context.form.procedure("timer_auto_pre_Timer", [this] { timer_auto_pre_Timer(); });
    context.form.procedure("tab_518_Click", [this, &tabs = context.outerTabs](int strip) {
        if (strip == tabs.index() && tabs.selected() != diagramTab)
            leave();
    });
}

void DiagramPage::addControls() {
    for (int i = 0; const ModeButton& button : modeButtons)
        controls_.addButton({buttons, i++}, button.caption).setTooltip(tooltipOf(button));
    for (int i = 0; const std::string_view caption : modeBoxes)
        controls_.addBox({boxControls, i++}, caption);
    for (int i = 0; i < modeLines; ++i)
        controls_.addLabel({lines, i}, "").hide();
    controls_.addLabel(modeText, "").setTooltip(fmt::format("0x{:04X}", readModeWord));
    controls_.addLabel(requestMode, "Normal Request");
    controls_.addLabel({"diagram_hint"},
                       "--> The white lines show the possible transitions from the current mode.");
}

forms::CheckBox& DiagramPage::box(int index) const {
    return controls_.get<forms::CheckBox>({boxControls, index});
}

void DiagramPage::Send_pre_prog_Click(int index) {
    const ModeButton& button = modeButtons.at(static_cast<std::size_t>(index));
    const bool isThere = controls_.find({buttons, index})->backColor() == presentModeColour;
    if (button.select && !(button.skipsEntry && isThere) && !enterMode(*button.select))
        return;
    for (const ModeWord& step : button.words)
        if (!sendStep(step))
            return;
}

bool DiagramPage::enterMode(std::uint8_t select) {
    if (!link_.exchange(readRandomWord))
        return false;
    // In normal mode the select bits are read as 11, so that their inverse adds nothing.
    const auto low = static_cast<std::uint8_t>((select << 6) + 255 - link_.replyLow());
    return link_.exchange(static_cast<std::uint16_t>(specialModeWriteHigh << 8 | low));
}

bool DiagramPage::sendStep(const ModeWord& step) {
    if (step.onlyWhereEnabled && !box(step.box).enabled())
        return true;
    const bool chosen = step.box < 0 || box(step.box).checked();
    const std::optional<std::uint16_t> word = chosen ? std::optional(step.word) : step.whenClear;
    return !word || link_.exchange(*word);
}

void DiagramPage::timer_auto_pre_Timer() {
    link_.exchange(readModeWord);
    controls_.get<forms::Label>(modeText).setCaption(
        fmt::format("{}  {}", hex(link_.replyHigh()), hex(link_.replyLow())));
    if (link_.isOutOfReach()) { // one message is enough
        leave();
        return;
    }
    showNoMode();
    showMode(link_.replyLow());
}

void DiagramPage::showNoMode() {
    for (int i = 0; i < static_cast<int>(modeButtons.size()); ++i)
        controls_.find({buttons, i})->setBackColor(forms::buttonFaceColor);
    controls_.find(requestMode)->setBackColor(forms::buttonFaceColor);
    for (int i = 0; i < modeLines; ++i)
        controls_.find({lines, i})->hide();
}

void DiagramPage::showMode(int low) {
    for (const ShownMode& mode : shownModes) {
        if (low < mode.least || low > mode.most)
            continue;
        controls_.get<forms::Label>(modeText).setCaption(mode.caption);
        controls_.find(mode.highlight)->setBackColor(presentModeColour);
        for (const int line : mode.lines)
            controls_.find({lines, line})->show();
    }
}

void DiagramPage::leave() {
    box(autoReadingBox).setValue(0);
    timer_auto_pre.disable();
}

} // namespace bitlux::zt72518
