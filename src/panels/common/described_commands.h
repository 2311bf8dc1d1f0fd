#pragma once

#include "panels/common/line_index.h"
#include "panels/common/panel_words.h"
#include "panels/common/sequence_player.h"

#include <functional>
#include <string>
#include <vector>

namespace bitlux {

/// The lines of a sequence that a chip's description defines: its writes, with a value in
/// hexadecimal, its reads, which answer with the value that was read, and its commands. Any other
/// line is refused.
class DescribedCommands : public SequenceCommands {
public:
    /// Both outlive it.
    DescribedCommands(const LineIndex& index, PanelWords& words) : index_(index), words_(words) {}

    /// Executes a command; set by the owner of the registers.
    std::function<void(const chips::Command& command)> execute = [](const chips::Command&) {};

    std::vector<std::string> play(int line, const std::string& name,
                                  const std::string& value) override;

private:
    const LineIndex& index_;
    PanelWords& words_;
};

} // namespace bitlux
