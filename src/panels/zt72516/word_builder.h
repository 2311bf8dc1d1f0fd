#pragma once

#include "panels/common/key_filters.h"
#include "panels/common/label_row.h"
#include "panels/common/panel_part.h"
#include "platform/event.h"

#include <cstdint>
#include <string>

namespace bitlux::zt72516 {

/// The procedures that build a word bit by bit in WordToSend, and the displays of the word sent and
/// received. While the panel is active, the answer to every word is shown, from any sender.
///
/// After each of the procedures, WordToSend has at least the bits of the chip's words.
class WordBuilder : public PanelPart {
public:
    explicit WordBuilder(const PanelContext& context);

    void ClearWordToSend();
    /// Takes bits 24 to 29 of `address`.
    void SetSpiAddress(std::int32_t address);
    void SetReadCmd() { setCommand(false, false); }
    void SetWriteCmd() { setCommand(true, false); }
    void SetFlagsCmd() { setCommand(false, true); }
    /// Sets the data bits that are 1 in the decimal number that a text begins with, and clears
    /// none. Raises Failure (Overflow) for a number beyond 32 bits.
    void SetSpiData(const std::string& text);

    void UpdateSpiWordSent();
    void UpdateSpiWordDisplay();
    void UpdateSpiWordReceived();
    /// The key to use instead of `key`; 0 for none.
    int HexCheck(int key);

private:
    void setBit(int bit, bool on);
    void setCommand(bool write, bool flags);
    void registerProcedures(const PanelContext& context);

    Session& session_;
    PanelWords& words_;
    KeyFilters filters_;
    const LabelRow& display_;
    Subscription transferred_;

public:
    forms::Label SPIWordSent;
    forms::Label SPIWordRcvd;
};

} // namespace bitlux::zt72516
