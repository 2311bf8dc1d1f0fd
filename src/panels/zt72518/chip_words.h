#pragma once

#include "chips/zt72518/flags.h"
#include "panels/common/register_words.h"
#include "panels/zt72518/chip_link.h"
#include "panels/zt72518/panel_variables.h"

#include <cstdint>
#include <string>

namespace bitlux::zt72518 {

/// The words of the chip's registers and flags. Every word is added to the command store while
/// StoreCommands is set.
class ChipWords : public RegisterWords {
public:
    /// All outlive it.
    ChipWords(ChipLink& link, PanelVariables& variables, const CommandSinks& sinks)
        : link_(link), variables_(variables), sinks_(sinks) {}

    void write(const oldchips::Register& target, std::uint32_t data) override;
    std::uint32_t read(const oldchips::Register& source, RegisterView view) override;
    std::uint8_t readFlags(const oldchips::zt72518::FlagRow& row);
    /// Reads the general flags into all sixteen labels of the status row.
    void readGeneralFlags();
    void append(const std::string& name, const std::string& value) override {
        sinks_.append(name, value);
    }

    /// Sets ParityBit, which brings the ones of data and parity to an odd number.
    void ParityOfWordLow(std::uint8_t data);

    [[nodiscard]] std::string writeText(const oldchips::Register& target) const override;
    [[nodiscard]] std::string readText(const oldchips::Register& source,
                                       RegisterView view) const override;
    [[nodiscard]] static std::string flagText(const oldchips::zt72518::FlagRow& row);
    [[nodiscard]] static std::string generalFlagsText();

private:
    [[nodiscard]] std::uint8_t reading(std::uint8_t high) const;
    std::uint8_t readView(std::uint8_t high, bool highView);
    void store(const std::string& name, const std::string& value) const;

    ChipLink& link_;
    PanelVariables& variables_;
    const CommandSinks& sinks_;
};

/// What goes with a line that reads these flags.
std::string flagLineValue(const oldchips::zt72518::FlagRow& row);

} // namespace bitlux::zt72518
