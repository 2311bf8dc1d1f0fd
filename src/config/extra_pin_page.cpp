#include "config/extra_pin_page.h"

#include "transfer/extra_pins.h"
#include "transfer/pin_layer.h"

#include <memory>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int dataPinCount = 5;
constexpr int controlPinCount = 4;

/// "Data 0": the text of a number has a place for its sign.
std::string pinName(const std::string& kind, int number) {
    return fmt::format("{} {}", kind, number);
}

template <typename Saved>
void saveRows(const PinRows& rows, Saved& enable, auto& name, auto& index) {
    for (int row = 0; row < rows.count(); ++row) {
        const auto i = static_cast<std::size_t>(row);
        enable.at(i) = rows.enable(row).value();
        name.at(i) = rows.name(row).text();
        index.at(i) = rows.assignment(row).listIndex();
    }
}

template <typename Saved>
void restoreRows(PinRows& rows, const Saved& enable, const auto& name, const auto& index) {
    for (int row = 0; row < rows.count(); ++row) {
        const auto i = static_cast<std::size_t>(row);
        rows.enable(row).setValue(enable.at(i));
        rows.name(row).setText(name.at(i));
        rows.assignment(row).setListIndex(index.at(i));
    }
}

} // namespace

PinRows::PinRows(forms::Form& form, const std::string& kind, int count,
                 const std::vector<std::string>& pins)
    : enable("chk" + kind + "PinEnable", 0, count - 1,
             [&](const std::string& arrayName, int index) {
                 return std::make_unique<forms::CheckBox>(form, arrayName, "Enable", index);
             }),
      name("txt" + kind + "PinName", 0, count - 1,
           [&](const std::string& arrayName, int index) {
               auto box = std::make_unique<forms::TextBox>(form, arrayName, index);
               box->setText(fmt::format("{}{}", kind, index));
               return box;
           }),
      assignment("cmb" + kind + "PinAssignment", 0, count - 1,
                 [&](const std::string& arrayName, int index) {
                     return std::make_unique<forms::ComboBox>(
                         form, arrayName, forms::ComboBox::Style::List, pins, index);
                 }),
      kind_(kind) {
    form.procedure("chk" + kind + "PinEnable_Click", [this](int row) { enable_Click(row); });
}

void PinRows::setDefaults() {
    for (int row = 0; row < count(); ++row) {
        enable(row).setValue(0);
        name(row).setText(pinName(kind_, row));
        assignment(row).setListIndex(-1);
        enable_Click(row);
    }
}

void PinRows::enable_Click(int row) {
    name(row).setEnabled(enabled(row));
    assignment(row).setEnabled(enabled(row));
}

ExtraPinPage::ExtraPinPage(forms::Form& form)
    : lblExtraPinsDisabled(form, "lblExtraPinsDisabled"),
      frameStandardPins(form, "frameStandardPins", "Data pins"),
      frameOpenCollectorPins(form, "frameOpenCollectorPins", "Control pins"),
      frameUSBExtraPins(form, "frameUSBExtraPins", "All Extra Pins"),
      dataPins(form, "Data", dataPinCount, {"2", "3", "4", "5", "6", "7", "8", "9"}),
      controlPins(form, "Control", controlPinCount, {"1", "14", "16", "17"}),
      Check("Check", 0, dataPinCount + controlPinCount - 1,
            [&form](const std::string& name, int index) {
                const bool isData = index < dataPinCount;
                return std::make_unique<forms::CheckBox>(
                    form, name,
                    fmt::format("{}{}", isData ? "Data" : "Control",
                                isData ? index : index - dataPinCount),
                    index);
            }) {
    lblExtraPinsDisabled.hide();
    frameUSBExtraPins.hide();
}

void ExtraPinPage::setDefaults() {
    dataPins.setDefaults();
    controlPins.setDefaults();
}

bool ExtraPinPage::allAssigned() const {
    for (const PinRows* rows : {&dataPins, &controlPins})
        for (int row = 0; row < rows->count(); ++row)
            if (rows->enabled(row) && rows->assignment(row).listIndex() < 0)
                return false;
    return true;
}

std::vector<PinField> ExtraPinPage::pinFields() const {
    std::vector<PinField> fields;
    for (const PinRows* rows : {&dataPins, &controlPins})
        for (int row = 0; row < rows->count(); ++row) {
            const std::string& pin = rows->assignment(row).text();
            const bool isPrefixed = rows == &dataPins || pin == "1";
            if (rows->enabled(row))
                fields.push_back({&rows->assignment(row), rows->name(row).text(),
                                  (isPrefixed ? "9" : "") + pin});
        }
    return fields;
}

std::vector<std::string> ExtraPinPage::portNames() const {
    std::vector<std::string> names;
    for (const PinRows* rows : {&dataPins, &controlPins})
        for (int row = 0; row < rows->count(); ++row)
            if (rows->enabled(row))
                names.push_back(rows->name(row).text());
    return names;
}

std::string ExtraPinPage::donglePinName(int pin) {
    return pin < dataPinCount ? pinName("Data", pin) : pinName("Control", pin - dataPinCount);
}

std::vector<std::string> ExtraPinPage::dongleNames() const {
    std::vector<std::string> names;
    for (int pin = 0; pin <= Check.last(); ++pin)
        if (Check(pin).checked())
            names.push_back(donglePinName(pin));
    return names;
}

void ExtraPinPage::clearDonglePins() {
    for (const auto& box : Check)
        box->setValue(0);
}

void ExtraPinPage::enterPinMaps(Session& session) const {
    for (int row = 0; row < dataPins.count(); ++row)
        if (dataPins.enabled(row))
            nameDataPin(session, ConvertPin(dataPins.assignment(row).text()),
                        dataPins.name(row).text());
    for (int row = 0; row < controlPins.count(); ++row)
        if (controlPins.enabled(row))
            nameControlPin(session, ConvertPin(controlPins.assignment(row).text()),
                           controlPins.name(row).text());
}

void ExtraPinPage::save(SavedDialog& saved) const {
    saveRows(dataPins, saved.SavedDataPinEnable, saved.SavedDataPinName, saved.SavedDataPinIndex);
    saveRows(controlPins, saved.SavedControlPinEnable, saved.SavedControlPinName,
             saved.SavedControlPinIndex);
}

void ExtraPinPage::restore(const SavedDialog& saved) {
    restoreRows(dataPins, saved.SavedDataPinEnable, saved.SavedDataPinName,
                saved.SavedDataPinIndex);
    restoreRows(controlPins, saved.SavedControlPinEnable, saved.SavedControlPinName,
                saved.SavedControlPinIndex);
}

} // namespace bitlux
