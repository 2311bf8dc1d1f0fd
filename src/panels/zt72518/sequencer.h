#pragma once

#include "panels/zt72518/auto_reads.h"
#include "panels/zt72518/command_store.h"
#include "panels/zt72518/sequence_editor.h"
#include "panels/zt72518/sequence_files.h"
#include "panels/zt72518/sequence_lists.h"
#include "panels/zt72518/sequence_run.h"
#include "panels/zt72518/watchdog.h"

namespace bitlux::zt72518 {

/// What the panel does by itself: the sequence with all that belongs to it, the watchdog, and the
/// automatic reads.
class Sequencer {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        PanelVariables& variables;
        ChipLink& link;
        DongleLink& dongle;
        forms::Label& startPick; ///< caption of the start of the loop
        forms::Label& stopPick;
        const Desk& desk;
        const Clock& clock;
    };

    Sequencer(forms::Form& form, const Parts& parts);

    /// What the register pages hand over goes here.
    [[nodiscard]] CommandSinks sinks();

    SequenceLists lists;
    SequenceFiles files;
    CommandStore store;
    Watchdog watchdog;
    SequenceEditor editor;
    SequenceRun run;
    AutoReads autoReads;
};

} // namespace bitlux::zt72518
