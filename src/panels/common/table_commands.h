#pragma once

#include "panels/common/register_words.h"
#include "panels/common/sequence_player.h"

#include <span>
#include <string>
#include <vector>

namespace bitlux {

/// The lines of a sequence that a table of registers tells: its writes, with a value in
/// hexadecimal, and its reads, which answer with the value that was read. A line that the table
/// does not know is refused.
class TableCommands : public SequenceCommands {
public:
    /// Both outlive it.
    TableCommands(std::span<const oldchips::Register> table, RegisterWords& words)
        : table_(table), words_(words) {}

    std::vector<std::string> play(int line, const std::string& name,
                                  const std::string& value) override;

private:
    std::span<const oldchips::Register> table_;
    RegisterWords& words_;
};

} // namespace bitlux
