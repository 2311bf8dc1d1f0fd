#include "sending/extra_pin_rows.h"

#include "transfer/extra_pins.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int rowCount = ExtraPinRows::rowCount;

forms::ControlArray<forms::OptionButton> options(forms::Form& form,
                                                 std::array<forms::OptionGroup, rowCount>& groups,
                                                 const std::string& name, const char* caption) {
    return {name, 0, rowCount - 1, [&, caption](const std::string& arrayName, int index) {
                return std::make_unique<forms::OptionButton>(
                    form, groups.at(static_cast<std::size_t>(index)), arrayName, caption, index);
            }};
}

const char* levelName(bool high) {
    return high ? "HIGH" : "LOW";
}

/// Shows the page of the clicked tab instead of the one that `current` notes.
void turnPage(const forms::TabStrip& tabs, const forms::ControlArray<forms::Frame>& pages,
              std::int16_t& current) {
    if (tabs.selected() == current)
        return;
    pages(tabs.selected()).show();
    pages(current).hide();
    current = static_cast<std::int16_t>(tabs.selected());
}

/// The pin update flag, while this exists. If no word transferred the change, the pins and the
/// choice of the row are restored.
class PinUpdate {
public:
    PinUpdate(Session& session, forms::OptionGroup& choice)
        : session_(session),
          choice_(choice),
          pins0_(session.USBExtraPins0),
          pins1_(session.USBExtraPins1) {
        session_.USBPinUpdate = 1;
    }
    ~PinUpdate() {
        session_.USBPinUpdate = 0;
        if (carried)
            return;
        session_.USBExtraPins0 = pins0_;
        session_.USBExtraPins1 = pins1_;
        choice_.clear();
    }
    PinUpdate(const PinUpdate&) = delete;
    PinUpdate& operator=(const PinUpdate&) = delete;

    bool carried = false;

private:
    Session& session_;
    forms::OptionGroup& choice_;
    std::uint8_t pins0_;
    std::uint8_t pins1_;
};

} // namespace

ExtraPinRows::ExtraPinRows(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      TabStripLogPins(
          form, "TabStripLogPins",
          {{"Session Log", "Displays the Session Log"},
           {"Extra Pins", "Allows you to take control of extra pins on the parallel port"}}),
      TabStripLogPinsNow(form, "TabStripLogPinsNow", {{"Session Log", ""}, {"Extra Pins", ""}}),
      lblPinName(form, "lblPinName", rowCount),
      cmdToggleHigh(form, "cmdToggleHigh", rowCount, "Set High"),
      cmdToggleLow(form, "cmdToggleLow", rowCount, "Set Low"),
      lblSetNow(form, "lblSetNow", rowCount),
      optSetHighNow(options(form, groups_, "optSetHighNow", "High")),
      optSetLowNow(options(form, groups_, "optSetLowNow", "Low")) {
    form.procedure("cmdToggleHigh_Click", [this](int index) { cmdToggleHigh_Click(index); });
    form.procedure("cmdToggleLow_Click", [this](int index) { cmdToggleLow_Click(index); });
    form.procedure("optSetHighNow_Click", [this](int index) { optSetHighNow_Click(index); });
    form.procedure("optSetLowNow_Click", [this](int index) { optSetLowNow_Click(index); });
    form.procedure("TabStripLogPins_Click", [this] { TabStripLogPins_Click(); });
    form.procedure("TabStripLogPinsNow_Click", [this] { TabStripLogPinsNow_Click(); });
    fill({});
}

void ExtraPinRows::fill(const std::vector<std::string>& names) {
    for (int row = 0; row < rowCount; ++row) {
        const bool used = static_cast<std::size_t>(row) < names.size();
        for (forms::Control* control : {static_cast<forms::Control*>(&lblPinName(row)),
                                        static_cast<forms::Control*>(&cmdToggleHigh(row)),
                                        static_cast<forms::Control*>(&cmdToggleLow(row)),
                                        static_cast<forms::Control*>(&lblSetNow(row)),
                                        static_cast<forms::Control*>(&optSetHighNow(row)),
                                        static_cast<forms::Control*>(&optSetLowNow(row))})
            control->setVisible(used);
        // What a row last set was another pin, or a pin that Apply has put low again.
        groups_.at(static_cast<std::size_t>(row)).clear();
        if (used)
            showRow(row, names[static_cast<std::size_t>(row)]);
    }
}

bool ExtraPinRows::has(std::string_view name) const {
    return std::any_of(lblSetNow.begin(), lblSetNow.end(), [name](const auto& label) {
        return label->visible() && label->caption() == name;
    });
}

void ExtraPinRows::showRow(int row, const std::string& name) {
    lblPinName(row).setCaption(name);
    lblSetNow(row).setCaption(name);
    cmdToggleHigh(row).setTooltip(fmt::format("Click to set {} high in 'Commands To Send'", name));
    cmdToggleLow(row).setTooltip(fmt::format("Click to set {} low in 'Commands To Send'", name));
    optSetHighNow(row).setTooltip(fmt::format("Click to set {} high", name));
    optSetLowNow(row).setTooltip(fmt::format("Click to set {} low", name));
}

void ExtraPinRows::cmdToggleHigh_Click(int index) {
    addCommand("* Set HIGH: " + lblPinName(index).caption());
}

void ExtraPinRows::cmdToggleLow_Click(int index) {
    addCommand("* Set LOW: " + lblPinName(index).caption());
}

void ExtraPinRows::addCommand(const std::string& line) {
    parts_.run.cmdStopContinuous_Click();
    parts_.commands.addToSend(line);
}

void ExtraPinRows::setNow(int index, bool high) {
    const std::string name = lblSetNow(index).caption();
    if (parts_.engine.usesDongle()) {
        if (!setOnDongle(index, high))
            return;
    } else if (!setOnPort(name, high)) {
        // The two texts differ; that is how they are.
        parts_.boxes.show({.text = high ? "Pin Name not found!" : "Error: Pin Name not found!"});
        parts_.run.cmdStopContinuous_Click();
        return;
    }
    parts_.log.logNote(fmt::format("Set {}: {}", levelName(high), name), parts_.run.continuous());
    if (parts_.run.cmdSendOnce.enabled() && parts_.run.cmdSendOnce.visible())
        parts_.run.cmdSendOnce.setFocus();
}

bool ExtraPinRows::setOnDongle(int index, bool high) {
    PinUpdate update(session_, groups_.at(static_cast<std::size_t>(index)));
    setDonglePin(session_, lblPinName(index).caption(), high);
    setDonglePin(session_, lblSetNow(index).caption(), high);
    update.carried = parts_.singleWord.DoSPISingle();
    return update.carried;
}

bool ExtraPinRows::setOnPort(const std::string& name, bool high) {
    switch (setPortPins(session_, name, high)) {
    case PinRegister::Data:
        parts_.pins.ToggleDataPort();
        return true;
    case PinRegister::Control:
        parts_.pins.ToggleControlPort();
        return true;
    case PinRegister::None:
        break;
    }
    return false;
}

void ExtraPinRows::TabStripLogPins_Click() {
    turnPage(TabStripLogPins, parts_.log.frameLogPins, session_.LogPinsTab);
}

void ExtraPinRows::TabStripLogPinsNow_Click() {
    turnPage(TabStripLogPinsNow, parts_.log.frameLogPinsNow, session_.LogPinsNowTab);
}

} // namespace bitlux
