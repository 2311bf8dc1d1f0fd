#pragma once

#include "panels/common/sequence_player.h"
#include "platform/forms/form.h"
#include "session/session.h"

#include <cstdint>
#include <functional>
#include <string>

namespace bitlux::zt72518 {

/// The variables of the form that its parts share; reachable by name from scripts.
struct PanelVariables : SequenceVariables {
    // Words
    std::int16_t BitIndex = 0;    ///< for scripts; no loop here needs it
    std::uint8_t WordLowByte = 0; ///< data byte being built
    bool SPIParityEnabled = false;
    std::uint8_t ParityBit = 0; ///< last computed; added to every write, also after parity is off
    std::int16_t ReadBit = 1;   ///< bit 8 of every read
    std::int16_t ModeCode = 0;  ///< of the mode register as it was read last

    // Command store
    bool StoreCommands = false;
    std::string StoreFileName;
    std::string StoreFileNumber;

    // Sequence
    bool Pass1 = false;
    bool Pass2 = false;
    bool Condition1Seen = false;
    bool Condition2Seen = false;
    bool NextLoopPick = true; ///< the next click on a command picks the loop's start, else its stop
    std::uint8_t SequenceHighByte = 0;
    bool SequenceIsWrite = false;
    bool SequenceIsWatchdog = false;
};

/// Makes them known under their names, and those of the session that only the panel works with.
void registerVariables(forms::Form& form, PanelVariables& variables, Session& session);

/// What the register pages hand to the sequencer.
struct CommandSinks {
    /// Adds a line to the end of the sequence.
    std::function<void(const std::string& name, const std::string& value)> append;
    /// save_log: adds a line to the command store. To be called while StoreCommands is set only.
    std::function<void(const std::string& name, const std::string& value)> store;
};

} // namespace bitlux::zt72518
