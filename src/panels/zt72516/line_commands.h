#pragma once

#include "panels/common/panel_part.h"
#include "panels/zt72516/word_builder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::zt72516 {

/// What the lines of the sequence do: reads and writes go out as they are built, commands are what
/// their buttons do, and a name that is none sends 0. Beside them stand the controls of conditions
/// for a stop, which do nothing.
class LineCommands : public PanelPart, public SequenceCommands {
public:
    explicit LineCommands(const PanelContext& context);

    void unload() override { sequence_.player.abandon(); }

    std::vector<std::string> play(int line, const std::string& name,
                                  const std::string& value) override;

    /// Builds the word of a line in WordToSend, a write with the value in row `index` of
    /// List_Value; or carries a command out. SendAfterConvert tells that the word is yet to be
    /// sent.
    void CovertNameToSpiWord(const std::string& name, int index);

    // Variables of the form
    bool SendAfterConvert = false;
    std::int32_t LastReadValue = 0;

private:
    void addConditions(const PanelContext& context);

    PanelControls& controls_;
    PanelWords& words_;
    PanelSequence& sequence_;
    WordBuilder& builder_;

public:
    forms::TextBox Text_FirstCondition;
    forms::TextBox Text_SecondCondition;
};

} // namespace bitlux::zt72516
