#include "apps/settings_text.h"

#include "platform/printable.h"

#include <array>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

const char* clockText(std::int16_t code) {
    switch (code) {
    case 0:
        return "4 MHz";
    case 64:
        return "1 MHz";
    case 128:
        return "500 kHz";
    default:
        return "62.5 kHz";
    }
}

std::string extraPinText(const PinRows& rows) {
    std::string text;
    for (int row = 0; row < rows.count(); ++row)
        if (rows.enabled(row))
            text += fmt::format("{}{} on {}", text.empty() ? "" : ", ",
                                printable(rows.name(row).text(), 60), rows.assignment(row).text());
    return text.empty() ? "none" : text;
}

std::string donglePinText(const ExtraPinPage& pins) {
    const std::vector<std::string> names = pins.dongleNames();
    return names.empty() ? "none" : fmt::format("{}", fmt::join(names, ", "));
}

std::string addressText(const ConfigureDialog& dialog) {
    constexpr std::array addresses{"0x3BC", "0x378", "0x278"};
    for (const auto& box : dialog.chkHardCodeLPT)
        if (box->checked())
            return addresses.at(static_cast<std::size_t>(box->index().value()));
    return "the first that is found";
}

std::string logText(const ConfigureDialog& dialog) {
    if (!dialog.chkEnableLog.checked())
        return "off";
    if (dialog.optLogOff.value())
        return "on, off while sending continuously";
    if (dialog.optLogForever.value())
        return "on, until it is full";
    return fmt::format("on, {} words of continuous sending",
                       printable(dialog.txtMessageLimit.text(), 20));
}

std::string partTabText(const ConfigureDialog& dialog) {
    std::string text;
    const std::array<std::pair<const forms::CheckBox*, const char*>, 5> parts{
        {{&dialog.CheckEnable72361, "72361"},
         {&dialog.CheckEnable72517, "72517"},
         {&dialog.CheckEnable72518, "72518"},
         {&dialog.CheckEnable72537, "72537"},
         {&dialog.CheckEnable72516, "72516"}}};
    for (const auto& [check, number] : parts)
        if (check->checked())
            text += fmt::format("{}{}", text.empty() ? "" : ", ", number);
    return text.empty() ? "none" : text;
}

} // namespace

SettingRows settingRows(Program& program) {
    const ConfigureDialog& dialog = program.dialog();
    const auto level = [](const forms::OptionButton& high) {
        return high.value() ? "high" : "low";
    };
    SettingRows rows{
        {"Part", printable(dialog.txtPartName.text(), 200)},
        {"Word", fmt::format("{} bits, {} first", printable(dialog.cmbSPIWordLength.text(), 20),
                             dialog.optMSBfirst.value() ? "MSB" : "LSB")},
        {"SPI type", fmt::format("{}", dialog.types.TabStripSPItype.selected())},
        {"Chip select", fmt::format("{} when asserted", level(dialog.optCSpositive))},
        {"Data in", fmt::format("a one is {}", level(dialog.optDIpolarity_pos))},
        {"Data out", fmt::format("a one is {}", level(dialog.optDOpolarity_pos))},
        {"Dongle clock", clockText(program.session().SPIBaudRate)},
        {"Port address", addressText(dialog)},
        {"Port pins", fmt::format("CS {}, DI {}, CLK {}, DO {}", dialog.cmbCS.text(),
                                  dialog.cmbDI.text(), dialog.cmbCLK.text(), dialog.cmbDO.text())},
        {"Data pins", extraPinText(dialog.extraPins.dataPins)},
        {"Control pins", extraPinText(dialog.extraPins.controlPins)},
        {"Dongle pins", donglePinText(dialog.extraPins)},
        {"Display", dialog.optBinary.value() ? "binary" : "hexadecimal"},
        {"Session Log", logText(dialog)},
        {"Part tabs", partTabText(dialog)},
    };
    if (const std::vector<std::string>& chips = program.session().UserChips; !chips.empty())
        rows.emplace_back("Chips", printable(fmt::format("{}", fmt::join(chips, ", ")), 1000));
    return rows;
}

} // namespace bitlux
