#pragma once

#include "chips/description.h"
#include "panels/common/described_commands.h"
#include "panels/common/line_index.h"
#include "panels/common/panel_surroundings.h"
#include "panels/common/sequence_editor.h"
#include "panels/common/sequence_files.h"
#include "panels/common/sequence_lists.h"
#include "panels/common/sequence_player.h"
#include "platform/forms/control_array.h"

namespace bitlux {

/// The sequence of a panel: its lists, their editing, their files, and the run over them.
class PanelSequence {
public:
    /// Elements of Val_loop; a chip's description defines their number.
    enum Number : std::uint8_t { LoopStart, LoopStop };

    /// All outlive it.
    PanelSequence(forms::Form& form, const chips::Chip& chip, PanelWords& words,
                  const PanelSurroundings& outside);

    [[nodiscard]] const LineIndex& index() const { return index_; }

private:
    LineIndex index_;

public:
    DescribedCommands commands;
    SequenceVariables variables;
    forms::ControlArray<forms::TextBox> Val_loop;
    SequenceLists lists;
    SequenceFiles files;
    SequenceEditor editor;
    SequencePlayer player;
};

} // namespace bitlux
