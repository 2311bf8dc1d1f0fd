#pragma once

#include "panels/common/sequence_player.h"
#include "panels/zt72518/chip_link.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/panel_variables.h"
#include "panels/zt72518/sequence_decoder.h"
#include "panels/zt72518/watchdog.h"
#include "session/session.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::zt72518 {

/// What the lines of the sequence do: words of registers and flags by their names, a change of mode
/// by the random word, and what the dongle does for the watchdog.
class LineCommands : public SequenceCommands {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        PanelVariables& variables;
        ChipLink& link;
        ChipWords& words;
        SequenceDecoder& decoder;
        Watchdog& watchdog;
        const forms::TextBox& triggerLine; ///< at which the dongle gives its pulse
    };

    explicit LineCommands(const Parts& parts) : parts_(parts), variables_(parts.variables) {}

    void stretchBegins() override { variables_.SPIParityEnabled = false; }
    /// A frame of the trigger line asks the dongle for a pulse.
    void lineBegins(int line) override;
    std::vector<std::string> play(int line, const std::string& name,
                                  const std::string& value) override;

private:
    void enterSpecialMode(std::uint8_t choice);
    std::vector<std::string> send(const std::string& name, const std::string& value);

    Parts parts_;
    PanelVariables& variables_;
};

} // namespace bitlux::zt72518
