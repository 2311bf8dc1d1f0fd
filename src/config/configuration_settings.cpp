#include "config/configuration_settings.h"

#include <array>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

using Setting = ConfigurationSetting;
using Settings = std::vector<Setting>;
using Read = std::function<void(const RecordValue&)>;

Setting text(std::string key, forms::TextBox& box) {
    return {std::move(key), [&box] { return box.text(); },
            [&box](const RecordValue& value) { box.setText(textOf(value)); }};
}

Setting check(std::string key, forms::CheckBox& box) {
    return {std::move(key), [&box] { return box.value(); },
            [&box](const RecordValue& value) { box.setValue(integerOf(value)); }};
}

/// One of two options is set, the first for True.
Setting either(std::string key, forms::OptionButton& yes, forms::OptionButton& no) {
    return {
        std::move(key), [&yes] { return yes.value(); },
        [&yes, &no](const RecordValue& value) { (booleanOf(value) ? yes : no).setValue(true); }};
}

Setting option(std::string key, forms::OptionButton& button) {
    return {std::move(key), [&button] { return button.value(); },
            [&button](const RecordValue& value) { button.setValue(booleanOf(value)); }};
}

/// A pin of the port, which a dongle that is ready does without.
Setting pin(std::string key, forms::ComboBox& list, const Session& session) {
    return {std::move(key), [&list] { return list.text(); },
            [&list, &session](const RecordValue& value) {
                if (!session.USBReady)
                    list.choose(textOf(value));
            }};
}

Setting assignment(std::string key, forms::ComboBox& list) {
    return {std::move(key), [&list] { return list.text(); },
            [&list](const RecordValue& value) {
                if (const std::string pinNumber = textOf(value); !pinNumber.empty())
                    list.setText(pinNumber);
            }};
}

/// The same under the name that older files give it.
Setting older(std::string key, const Setting& setting) {
    return {std::move(key), {}, setting.read};
}

Setting partTab(std::int32_t number, forms::CheckBox& box, const PartTabAccess& tabs) {
    return {fmt::format("[Enable{}]", number), [&box] { return box.value(); },
            [number, &box, &tabs](const RecordValue& value) {
                if (numberOf(value) != 1)
                    return;
                if (!tabs.isActive(number))
                    tabs.add(number);
                box.setValue(1);
            }};
}

Setting address(std::string key, ConfigureDialog& dialog, int index) {
    Setting setting = check(std::move(key), dialog.chkHardCodeLPT(index));
    setting.read = [&dialog, index](const RecordValue& value) {
        const std::int16_t wanted = integerOf(value);
        if (!dialog.adapters.insteadOfFiles.value_or("").empty())
            return; // instead of the port, too
        dialog.chkHardCodeLPT(index).setValue(wanted);
        dialog.chkHardCodeLPT_Click(index);
    };
    return setting;
}

Setting serialMode(ConfigureDialog& dialog) {
    Setting setting = check("[SerialMode]", dialog.ChkSerialPort);
    setting.read = [&dialog](const RecordValue& value) {
        // The dongle is looked for here in any case; a port that stays in use keeps the address
        // that was fixed before.
        const std::int16_t wanted = integerOf(value);
        if (wanted == 1 && dialog.ChkSerialPort.checked())
            dialog.chkSerialPort_Click();
        else
            dialog.ChkSerialPort.setValue(wanted);
    };
    return setting;
}

Setting spiType(ConfigureDialog& dialog, const PartTabAccess& tabs) {
    return {"[SPIType]", [&tabs] { return tabs.typeToSave(); },
            [&types = dialog.types](const RecordValue& value) {
                types.TabStripSPItype.setSelected(integerOf(value));
                types.TabStripSPItype_Click();
            }};
}

Setting enableLog(ConfigureDialog& dialog) {
    Setting setting = check("[EnableLog]", dialog.chkEnableLog);
    setting.read = [&dialog](const RecordValue& value) {
        dialog.chkEnableLog.setValue(integerOf(value));
        dialog.chkEnableLog_Click();
    };
    return setting;
}

/// In the file only where an adapter is chosen, so that other files stay as they were.
Setting adapter(ConfigureDialog& dialog) {
    Setting setting{"[Adapter]", {}, [&dialog](const RecordValue& value) {
                        AdapterEntries& adapters = dialog.adapters;
                        adapters.namedByFile = textOf(value);
                        const std::string name =
                            adapters.insteadOfFiles.value_or(adapters.namedByFile);
                        if (!name.empty())
                            dialog.chooseAdapter(name);
                    }};
    if (const Adapter* chosen = dialog.adapters.chosen())
        setting.value = [name = chosen->name()] { return name; };
    return setting;
}

Setting baudRate(ConfigureDialog& dialog, Session& session) {
    return {"[SPIBaudRate]", [&session] { return session.SPIBaudRate; },
            [&dialog, &session](const RecordValue& value) {
                session.SPIBaudRate = integerOf(value);
                // The fourth is saved as 192, and no file sets it.
                constexpr std::array codes{0, 64, 128, 256};
                for (int i = 0; i < static_cast<int>(codes.size()); ++i)
                    if (session.SPIBaudRate == codes.at(static_cast<std::size_t>(i)))
                        dialog.SPIBaudRate(i).setValue(true);
            }};
}

void addPinRows(Settings& settings, const std::string& kind, PinRows& rows) {
    for (int row = 0; row < rows.count(); ++row) {
        const auto key = [&](const char* what) { return fmt::format("[{}{}{}]", kind, row, what); };
        settings.push_back(check(key("Enable"), rows.enable(row)));
        settings.push_back(text(key("Name"), rows.name(row)));
        settings.push_back(assignment(key("Assignment"), rows.assignment(row)));
    }
}

void addPins(Settings& settings, ConfigureDialog& dialog, const Session& session) {
    settings.push_back(pin("[CSpin]", dialog.cmbCS, session));
    settings.push_back(pin("[DIpin]", dialog.cmbDI, session));
    settings.push_back(older("[SIpin]", settings.back()));
    settings.push_back(pin("[DOpin]", dialog.cmbDO, session));
    settings.push_back(older("[SOpin]", settings.back()));
    settings.push_back(pin("[CLKpin]", dialog.cmbCLK, session));
    settings.push_back(either("[CSpositive]", dialog.optCSpositive, dialog.optCSnegative));
    settings.push_back(either("[DIpositive]", dialog.optDIpolarity_pos, dialog.optDIpolarity_neg));
    settings.push_back(older("[SIpositive]", settings.back()));
    settings.push_back(either("[DOpositive]", dialog.optDOpolarity_pos, dialog.optDOpolarity_neg));
    settings.push_back(older("[SOpositive]", settings.back()));
}

} // namespace

std::vector<ConfigurationSetting> configurationSettings(ConfigureDialog& dialog, Session& session,
                                                        const PartTabAccess& tabs) {
    Settings settings{
        text("[PartName]", dialog.txtPartName),
        partTab(72361, dialog.CheckEnable72361, tabs),
        partTab(72517, dialog.CheckEnable72517, tabs),
        partTab(72518, dialog.CheckEnable72518, tabs),
        partTab(72516, dialog.CheckEnable72516, tabs),
        partTab(72537, dialog.CheckEnable72537, tabs),
        {"[SPIWordLength]", [&box = dialog.cmbSPIWordLength] { return box.text(); },
         [&box = dialog.cmbSPIWordLength](const RecordValue& value) {
             box.setText(textOf(value));
         }},
        address("[HardCode3BC]", dialog, 0),
        address("[HardCode378]", dialog, 1),
        address("[HardCode278]", dialog, 2),
        either("[BinaryMode]", dialog.optBinary, dialog.optHex),
        serialMode(dialog),
        adapter(dialog),
    };
    addPins(settings, dialog, session);
    settings.push_back(either("[MSBFirst]", dialog.optMSBfirst, dialog.optLSBfirst));
    settings.push_back(spiType(dialog, tabs));
    addPinRows(settings, "Data", dialog.extraPins.dataPins);
    addPinRows(settings, "Control", dialog.extraPins.controlPins);
    settings.push_back(enableLog(dialog));
    settings.push_back(option("[LogOff]", dialog.optLogOff));
    settings.push_back(option("[LogForever]", dialog.optLogForever));
    settings.push_back(option("[LogFixedNumber]", dialog.optLogFixedNumber));
    settings.push_back(text("[MessageLimit]", dialog.txtMessageLimit));
    settings.push_back(baudRate(dialog, session));
    return settings;
}

std::vector<ConfigurationSetting> donglePinSettings(ConfigureDialog& dialog) {
    Settings settings;
    for (const auto& box : dialog.extraPins.Check)
        settings.push_back(check(fmt::format("[Dongle{}Enable]", box->caption()), *box));
    return settings;
}

} // namespace bitlux
