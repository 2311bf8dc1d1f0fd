#pragma once

#include "chips/register_map.h"
#include "panels/common/held_shape.h"
#include "panels/common/panel_controls.h"
#include "panels/common/register_pages.h"
#include "panels/common/sequence_editor.h"
#include "panels/common/sequence_files.h"
#include "panels/common/sequence_player.h"
#include "panels/common/table_commands.h"
#include "panels/common/table_words.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"
#include "transfer/word_engine.h"

namespace bitlux {

/// The control panel of a chip that its table tells whole: pages of registers, and a sequence of
/// their writes and reads. While it is open, words have the chip's shape.
class TablePanel : public forms::Form {
public:
    /// What the form works with; all outlive it.
    struct Parts {
        Session& session;
        WordEngine& engine;
        Desk desk;
        const Clock& clock;
    };

    /// The chip outlives it.
    TablePanel(forms::FormSet& set, const oldchips::Chip& chip, const Parts& parts);

private:
    SequenceVariables variables_;
    HeldShape shape_;

public:
    forms::ControlArray<forms::TextBox> Val_loop; ///< start and stop of the loop
    SequenceLists lists;
    SequenceFiles files;
    SequenceEditor editor;
    PanelControls pageControls;
    TableWords words;
    RegisterPages registers;
    TableCommands commands;
    SequencePlayer player;
};

} // namespace bitlux
