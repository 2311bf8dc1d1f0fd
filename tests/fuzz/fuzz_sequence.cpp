// Feeds bytes to the reader of sequence files. What it takes must come back the same once it was
// saved; what it refuses is a failure with a text.

#include "memory_file.h"
#include "panels/common/sequence_file.h"
#include "platform/failure.h"
#include "platform/forms/text_lines.h"
#include "support/temporary_folder.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace {

std::optional<bitlux::SequenceRows> rowsIn(const std::string& fileName) {
    try {
        return bitlux::loadSequence(fileName);
    } catch (const bitlux::Failure& failure) {
        bitlux::fuzz::require(*failure.what() != '\0', "a failure without a text");
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bitlux;
    const fuzz::MemoryFile file(data, size);
    const std::optional<SequenceRows> rows = rowsIn(file.name());
    if (!rows)
        return 0;
    fuzz::require(rows->commands.size() == rows->values.size(), "commands without values");
    static const test::TemporaryFolder folder;
    const std::string saved = folder.path("saved.txt");
    forms::TextLines commands;
    commands.assign(rows->commands);
    forms::TextLines values;
    values.assign(rows->values);
    try {
        saveSequence(saved, commands, values);
    } catch (const Failure&) { // a carriage return amid a line
        return 0;
    }
    const std::optional<SequenceRows> again = rowsIn(saved);
    fuzz::require(again && again->commands == rows->commands && again->values == rows->values,
                  "the rows changed");
    return 0;
}
