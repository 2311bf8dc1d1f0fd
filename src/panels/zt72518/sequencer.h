#pragma once

#include "panels/common/sequence_editor.h"
#include "panels/common/sequence_files.h"
#include "panels/common/sequence_lists.h"
#include "panels/common/sequence_player.h"
#include "panels/zt72518/auto_reads.h"
#include "panels/zt72518/command_store.h"
#include "panels/zt72518/line_commands.h"
#include "panels/zt72518/loop_pick.h"
#include "panels/zt72518/sequence_stops.h"
#include "panels/zt72518/value_editor.h"
#include "panels/zt72518/watchdog.h"

namespace bitlux::zt72518 {

/// What the panel does by itself: the sequence with all that belongs to it, the watchdog, and the
/// automatic reads.
class Sequencer {
public:
    /// Elements of Val_loop.
    enum Number : std::uint8_t { LoopStart, LoopStop, EditedValue, TriggerLine };

    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        FailureBoxes& failures;
        PanelVariables& variables;
        ChipLink& link;
        const PanelControls& controls;
        ChipWords& words;
        SequenceDecoder& decoder;
        DongleLink& dongle;
        forms::Label& startCaption; ///< of the loop
        forms::Label& stopCaption;
        const Desk& desk;
        const Clock& clock;
    };

    Sequencer(forms::Form& form, const Parts& parts);

    /// What the register pages hand over goes here.
    [[nodiscard]] CommandSinks sinks();

    forms::ControlArray<forms::TextBox> Val_loop;
    SequenceLists lists;
    SequenceFiles files;
    CommandStore store;
    Watchdog watchdog;
    LineCommands commands;
    SequenceEditor editor;
    SequencePlayer player;
    SequenceStops stops;
    LoopPick loopPick;
    ValueEditor valueEditor;
    AutoReads autoReads;
};

} // namespace bitlux::zt72518
