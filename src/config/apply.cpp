// Apply: the one road from the controls of the dialog to the session.

#include "config/configure_dialog.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "transfer/extra_pins.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr const char* noPortChosen = "Please Select a Parallel Port.";
constexpr int longestBinaryWord = SingleWordPage::bitColumns;

std::string hexOnlyNote() {
    return fmt::format("You have selected a SPI word length longer than 40 bits.{}"
                       "You will only be able to enter your commands in Hex mode.",
                       lineBreak);
}

} // namespace

void ConfigureDialog::cmdApply_Click() {
    const bool hasBus = usesDongle() || session_.ParallelPortReady;
    // A number that is no limit is reported before anything has changed.
    const std::int16_t logLimit = hasBus ? wantedLogLimit() : session_.ContinuousLogLimit;
    // The word length is taken over before anything is validated, and stays when a later step
    // refuses.
    applyWordLength();
    if (hasBus && !(usesDongle() ? applyToDongle(logLimit) : applyToParallelPort(logLimit)))
        return;
    showApplied();
    applySucceeded_ = true;
}

void ConfigureDialog::showApplied() {
    parts_.singleWord.AdjustSPILabels();
    showPartTabs();
}

void ConfigureDialog::cmdOK_Click() {
    cmdApply_Click();
    if (applySucceeded_)
        setVisible(false);
}

void ConfigureDialog::applyWordLength() {
    recreateWord();
    if (session_.SPIWordLength != session_.SavedSPIWordLength) {
        session_.SavedSPIWordLength = session_.SPIWordLength;
        emptyLists();
    }
    parts_.singleWord.showBitColumns();
}

void ConfigureDialog::recreateWord() {
    const std::int16_t length = toInt16(wantedWordLength());
    if (length < 0)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("Subscript out of range: a word of {} bits", length));
    session_.SPIWordLength = length;
    session_.SingleWordBits.assign(static_cast<std::size_t>(session_.SPIWordLength) + 1, 0);
    parts_.emptied.empty();
}

void ConfigureDialog::emptyLists() {
    session_.QuickCommandTableEmpty = ConstOn;
    parts_.commands.clear();
    parts_.log.clear();
    parts_.singleWord.cmdAll0Single_Click();
}

void ConfigureDialog::showDonglePins() {
    if (usesDongle())
        parts_.extraPins.fill(extraPins.dongleNames());
}

bool ConfigureDialog::applyToDongle(std::int16_t logLimit) {
    // applySucceeded_ keeps its value, so that OK closes the dialog even after a refusal.
    showDonglePins();
    if (!acceptWordLength())
        return false;
    if (session_.StartingUp != ConstOn)
        session_.ConfigDirty = ConstOn;
    applyPartName();
    saveSnapshot();
    applyLogDecisions(logLimit);
    applyWordShape();
    session_.DisplayHex = optBinary.value() ? 0 : 1;
    if (session_.StartingUp != ConstOn)
        parts_.lblConfigNag.hide();
    return true;
}

bool ConfigureDialog::applyToParallelPort(std::int16_t logLimit) {
    applySucceeded_ = false;
    if (!extraPins.allAssigned())
        return refuse("No pin assignment was made for one or more Extra Pins.");
    sortPinNumbers();
    // Hidden, as at start-up and for a configuration file, the dialog applies what it holds.
    if (visible() && !(acceptPins() && acceptPortChoice()))
        return false;
    if (!settlePortChoice())
        return refuse(noPortChosen);
    if (!acceptAdapter())
        return false;
    if (!acceptWordLength())
        return false;
    if (session_.StartingUp != ConstOn)
        session_.ConfigDirty = ConstOn;
    applyPartName();
    applyPins();
    applyWordShape();
    applyDisplay();
    const bool hadControlPin = hasControlPin(session_);
    clearPinMaps(session_);
    parts_.extraPins.fill(extraPins.portNames());
    if (session_.StartingUp != ConstOn)
        parts_.lblConfigNag.hide();
    saveSnapshot();
    savePortSnapshot();
    applyLogDecisions(logLimit);
    extraPins.enterPinMaps(session_);
    choosePort();
    putOnWire(hadControlPin || hasControlPin(session_));
    return true;
}

/// The settings are in force by now, whether the port can be reached or not.
void ConfigureDialog::putOnWire(bool withControlPort) {
    try {
        parts_.pins.rest();
        if (withControlPort)
            parts_.pins.ToggleControlPort();
    } catch (...) {
        showApplied();
        throw;
    }
}

bool ConfigureDialog::acceptPins() {
    return !hasPinConflict() ||
           refuse("Pin Conflict!  Please select a different pin configuration.");
}

std::vector<PinField> ConfigureDialog::pinFields() const {
    // The prefix gives the data pins two digits. The data output has none, so its "7" meets no
    // data pin.
    std::vector<PinField> fields{{&cmbCS, "CS", "9" + cmbCS.text()},
                                 {&cmbDI, "DI", "9" + cmbDI.text()},
                                 {&cmbDO, "DO", cmbDO.text()},
                                 {&cmbCLK, "CLK", "9" + cmbCLK.text()}};
    for (PinField& field : extraPins.pinFields())
        fields.push_back(std::move(field));
    return fields;
}

std::vector<PinClash> ConfigureDialog::pinClashes() const {
    std::map<std::string, PinClash> byNumber;
    for (PinField& field : pinFields()) {
        const std::string& pin = field.field->text();
        if (pin.empty())
            continue; // which Apply has a message of its own for
        PinClash& clash = byNumber[field.number];
        clash.pin = pin;
        clash.fields.push_back(std::move(field));
    }
    std::vector<PinClash> clashes;
    for (auto& [number, clash] : byNumber)
        if (clash.fields.size() > 1)
            clashes.push_back(std::move(clash));
    return clashes;
}

void ConfigureDialog::sortPinNumbers() {
    std::vector<std::string> pins;
    for (PinField& field : pinFields())
        pins.push_back(std::move(field.number));
    std::sort(pins.begin(), pins.end());
    sortedPins_->clear();
    for (std::string& pin : pins)
        sortedPins_->add(std::move(pin));
    lstSortedPinNumbers.linesChanged();
}

bool ConfigureDialog::hasPinConflict() const {
    for (std::size_t i = 1; i < lstSortedPinNumbers.count(); ++i)
        if (lstSortedPinNumbers.line(i) == lstSortedPinNumbers.line(i - 1))
            return true;
    return false;
}

bool ConfigureDialog::acceptPortChoice() {
    const auto fixed = std::count_if(chkHardCodeLPT.begin(), chkHardCodeLPT.end(),
                                     [](const auto& box) { return box->checked(); });
    if (fixed > 1)
        return refuse("Cannot use more than one address for the Parallel Port!");
    if (fixed == 0 && cmbPortsAvailable.listIndex() < 0)
        return refuse(noPortChosen);
    return true;
}

/// Without a choice the first port counts.
bool ConfigureDialog::settlePortChoice() {
    if (!cmbPortsAvailable.enabled() || cmbPortsAvailable.listIndex() >= 0)
        return true;
    if (cmbPortsAvailable.items().empty())
        return false;
    cmbPortsAvailable.setListIndex(0);
    return true;
}

bool ConfigureDialog::acceptAdapter() {
    const Adapter* adapter = adapters.chosen();
    if (adapter == nullptr)
        return true;
    const std::string missing = AdapterEntries::missingPins(*adapter, pinFields());
    return missing.empty() || refuse(missing);
}

bool ConfigureDialog::acceptWordLength() {
    const double wanted = wantedWordLength();
    if (wanted > session_.MaxSPIBits)
        return refuse(fmt::format("The maximum number of SPI bits is {}", session_.MaxSPIBits));
    return wanted == session_.SPIWordLength || acceptFractionalLength();
}

bool ConfigureDialog::acceptFractionalLength() {
    if (session_.ConfigDirty == ConstOn && !parts_.commands.cmbMasterQCList.items().empty() &&
        !confirmed(
            fmt::format("Changing the number of SPI bits will destroy all of your Quick Commands.{}"
                        "Click OK to continue with changes, or click Cancel to discard changes.",
                        lineBreak)))
        return false;
    if (wantedWordLength() > longestBinaryWord &&
        !(usesDongle() ? refuse("USB Mode only supports 40 bits maximum at this time.")
                       : acceptHexOnly()))
        return false;
    recreateWord();
    session_.SavedSPIWordLength = session_.SPIWordLength;
    emptyLists();
    parts_.singleWord.showBitColumns();
    return true;
}

bool ConfigureDialog::acceptHexOnly() {
    if (!optBinary.value())
        return true;
    if (!confirmed(fmt::format("{}{}Click OK to use Hex mode, or click Cancel to discard changes.",
                               hexOnlyNote(), lineBreak)))
        return false;
    optHex.setValue(true);
    session_.DisplayHex = 1;
    return true;
}

bool ConfigureDialog::confirmed(const std::string& text) {
    return parts_.boxes.show(
               {.text = text, .title = "WARNING", .buttons = MessageBox::Buttons::OkCancel}) ==
           MessageBox::Answer::Ok;
}

void ConfigureDialog::applyPartName() {
    session_.PartName = txtPartName.text();
    parts_.labelMainTitle.setCaption(session_.PartName + " Bitlux Forge");
}

void ConfigureDialog::applyPins() {
    session_.CSPin = ConvertPin(cmbCS.text());
    session_.DIPin = ConvertPin(cmbDI.text());
    session_.DOPin = ConvertPin(cmbDO.text());
    session_.ClockPin = ConvertPin(cmbCLK.text());
    session_.ClockHighLevel = ConstHigh;
    session_.ClockLowLevel = ConstLow;
}

void ConfigureDialog::applyWordShape() {
    const auto level = [](bool high) { return high ? ConstHigh : ConstLow; };
    session_.MSBFirst = optMSBfirst.value() ? ConstOn : ConstOff;
    session_.CSAssertLevel = level(optCSpositive.value());
    session_.CSIdleLevel = level(!optCSpositive.value());
    session_.DIOneLevel = level(optDIpolarity_pos.value());
    session_.DIZeroLevel = level(!optDIpolarity_pos.value());
    session_.DOHighValue = level(optDOpolarity_pos.value());
    session_.DOLowValue = level(!optDOpolarity_pos.value());
    session_.SPIType = session_.SPITypeTab;
    session_.SavedSPIType = session_.SPITypeTab;
}

void ConfigureDialog::applyDisplay() {
    if (optBinary.value() && wantedWordLength() > longestBinaryWord) {
        parts_.boxes.show({.text = hexOnlyNote()});
        optHex.setValue(true);
    }
    session_.DisplayHex = optBinary.value() ? 0 : 1;
}

std::int16_t ConfigureDialog::wantedLogLimit() const {
    if (optLogForever.value())
        return session_.SessionLogCapacity;
    return optLogFixedNumber.value() ? toInt16(val(txtMessageLimit.text()))
                                     : session_.ContinuousLogLimit;
}

void ConfigureDialog::applyLogDecisions(std::int16_t limit) {
    session_.ContinuousLogEnabled = optLogOff.value() ? ConstOff : ConstOn;
    session_.ContinuousLogLimit = limit;
}

void ConfigureDialog::choosePort() {
    if (const Adapter* adapter = adapters.chosen()) {
        parts_.adapterBus.use(*adapter);
        session_.LPTPortAddress = address378;
        session_.Saved.SavedPortIndex = 0;
        return;
    }
    parts_.adapterBus.leave();
    chooseListedPort();
}

void ConfigureDialog::chooseListedPort() {
    if (cmbPortsAvailable.enabled()) {
        constexpr std::size_t digit = 3; // "LPT1: 0x378"
        const int number = hexDigit(cmbPortsAvailable.text().at(digit));
        session_.LPTPortAddress =
            session_.LPTPortAddresses.at(static_cast<std::size_t>(number - 1));
        session_.Saved.SavedPortIndex = number;
        return;
    }
    constexpr std::array addresses{address3BC, address378, address278};
    for (const auto& box : chkHardCodeLPT)
        if (box->checked()) {
            session_.LPTPortAddress = addresses.at(static_cast<std::size_t>(box->index().value()));
            return;
        }
}

void ConfigureDialog::showPartTabs() {
    parts_.resetTabs();
    for (const auto& [box, number] : partBoxes())
        if (box->checked())
            parts_.addPartTab(number);
}

std::array<std::pair<forms::CheckBox*, std::int32_t>, 5> ConfigureDialog::partBoxes() {
    return {{{&CheckEnable72361, 72361},
             {&CheckEnable72517, 72517},
             {&CheckEnable72518, 72518},
             {&CheckEnable72537, 72537},
             {&CheckEnable72516, 72516}}};
}

double ConfigureDialog::wantedWordLength() const {
    return val(cmbSPIWordLength.text());
}

bool ConfigureDialog::refuse(const std::string& text) {
    parts_.boxes.show({.text = text});
    return false;
}

} // namespace bitlux
