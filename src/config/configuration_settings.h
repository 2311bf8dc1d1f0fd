#pragma once

#include "config/configuration_record.h"
#include "config/configure_dialog.h"
#include "session/session.h"

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace bitlux {

/// A setting of the dialog as a record of a configuration file.
struct ConfigurationSetting {
    using Value = std::variant<std::string, int, bool>;

    std::string key;
    std::function<Value()> value; ///< what is saved; none for the names of older files
    std::function<void(const RecordValue& value)> read;
};

/// The part tabs that a configuration file opens.
struct PartTabAccess {
    std::function<void()> reset;
    std::function<bool(std::int32_t partNumber)> isActive;
    std::function<void(std::int32_t partNumber)> add;
    /// Disables all chips of users.
    std::function<void()> resetChips;
    /// Enables a chip of a user; false when it has no file and therefore no tab.
    std::function<bool(const std::string& name)> addChip;
    /// The SPI type to save, without changes made by tabs.
    std::function<std::int16_t()> typeToSave;
};

/// All settings, in the order in which they are saved, and the older names among them. Their
/// functions work on the dialog's controls, which may differ from what was applied. All arguments
/// outlive the result.
std::vector<ConfigurationSetting> configurationSettings(ConfigureDialog& dialog, Session& session,
                                                        const PartTabAccess& tabs);

/// The extra pins of the dongle, which are at the end of a file when one of them is enabled.
std::vector<ConfigurationSetting> donglePinSettings(ConfigureDialog& dialog);

} // namespace bitlux
