#pragma once

#include "panels/common/panel_part.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/watchdog.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::zt72518 {

/// Plays the lines of the sequence: words of registers and flags by their names, a change of mode
/// by the random word, and commands to the dongle for the watchdog. An unknown name sends 0.
class LineCommands : public PanelPart, public SequenceCommands {
public:
    explicit LineCommands(const PanelContext& context);

    void stretchBegins() override { words_.SPIParityEnabled = false; }
    std::vector<std::string> play(int line, const std::string& name,
                                  const std::string& value) override;

    /// Sets SequenceHighByte (0 for an unknown name), SequenceIsWrite and SequenceIsWatchdog. A
    /// watchdog command is executed at once.
    void Decod_Name(std::string_view name);

    // Variables of the form
    std::uint8_t SequenceHighByte = 0;
    bool SequenceIsWrite = false;
    bool SequenceIsWatchdog = false;

private:
    [[nodiscard]] unsigned highByteOf(const LineMeaning& meaning) const;
    void enterSpecialMode(std::uint8_t choice);
    std::vector<std::string> send(const std::string& name, const std::string& value);

    forms::Form& form_;
    PanelSequence& sequence_;
    const chips::Chip& chip_;
    ChipWords& words_;
    Watchdog& watchdog_;
};

} // namespace bitlux::zt72518
