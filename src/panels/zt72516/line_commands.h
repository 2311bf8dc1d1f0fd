#pragma once

#include "panels/common/panel_part.h"
#include "panels/zt72516/word_builder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::zt72516 {

/// Plays the lines of the sequence: reads and writes are sent as built, commands do the same as
/// their buttons, and an unknown name sends 0.
class LineCommands : public PanelPart, public SequenceCommands {
public:
    explicit LineCommands(const PanelContext& context);

    void unload() override { sequence_.player.abandon(); }

    std::vector<std::string> play(int line, const std::string& name,
                                  const std::string& value) override;

    /// Builds the word of a line in WordToSend, a write with the value in row `index` of
    /// List_Value; or executes a command. SendAfterConvert says that the word is still to be sent.
    void CovertNameToSpiWord(const std::string& name, int index);

    // Variables of the form
    bool SendAfterConvert = false;
    std::int32_t LastReadValue = 0;

private:
    PanelControls& controls_;
    PanelWords& words_;
    PanelSequence& sequence_;
    WordBuilder& builder_;
};

} // namespace bitlux::zt72516
