#include "config/kept_file.h"

#include "config/configuration_record.h"
#include "platform/failure.h"
#include "platform/line_reader.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <variant>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// A name follows the bits, each of which is followed by a blank.
bool hasName(std::string_view value) {
    for (std::size_t length = 1; length > 0; value.remove_prefix(length)) {
        const bool isBit = value.starts_with("0 ") || value.starts_with("1 ");
        length = isBit ? 2 : value.starts_with(' ') ? 1 : 0;
    }
    return !value.empty();
}

bool isNamedCommand(std::string_view line) {
    try {
        const ConfigurationRecord record = parseRecord(line);
        const auto* value = std::get_if<std::string_view>(&record.value);
        return record.key == "[QuickCommand]" && value != nullptr && hasName(*value);
    } catch (const Failure&) { // no record
        return false;
    }
}

} // namespace

std::size_t namedCommands(const QuickCommandTable& table) {
    std::size_t count = 0;
    for (std::size_t row = 0; row < table.rows(); ++row)
        count += table.name(row).empty() ? 0 : 1;
    return count;
}

std::size_t namedCommandsIn(const std::string& fileName) {
    std::size_t count = 0;
    try {
        LineReader file(fileName);
        while (const std::optional<std::string_view> line = file.next())
            count += isNamedCommand(*line) ? 1 : 0;
    } catch (const Failure&) { // as far as it can be read
        return count;
    }
    return count;
}

std::string keepOldFile(const std::string& fileName) {
    namespace fs = std::filesystem;
    std::string kept = fileName + "~";
    std::error_code error;
    fs::copy_file(fileName, kept, fs::copy_options::overwrite_existing, error);
    if (error)
        throw Failure(Failure::Kind::File,
                      fmt::format("The file \"{}\" has more Quick Commands than there are now, and "
                                  "cannot be kept as \"{}\": {}.  Nothing was saved; choose "
                                  "another name.",
                                  fileName, kept, error.message()));
    return kept;
}

} // namespace bitlux
