#include "panels/zt72516/word_builder.h"

#include "platform/conversions.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux::zt72516 {

namespace {

constexpr int wordBits = 32;
constexpr int dataBits = 24;
constexpr int writeBit = 30;
constexpr int flagsBit = 31;
constexpr const char* sentCaption = "SPI Word Sent:";
constexpr const char* receivedCaption = "SPI Word Rcvd:";

/// As "4300-1A2B".
std::string textOf(const std::vector<std::int16_t>& word) {
    std::uint32_t value = 0;
    for (std::size_t bit = 0; bit < std::min<std::size_t>(word.size(), wordBits); ++bit)
        value |= word[bit] != 0 ? 1U << bit : 0U;
    return fmt::format("{:04X}-{:04X}", value >> 16, value & 0xFFFF);
}

} // namespace

WordBuilder::WordBuilder(const PanelContext& context)
    : session_(context.outside.session),
      words_(context.words),
      filters_(context.outside.desk.boxes, context.outside.desk.sound),
      display_(context.controls.row("SPI_Word")),
      SPIWordSent(context.form, "SPIWordSent", sentCaption),
      SPIWordRcvd(context.form, "SPIWordRcvd", receivedCaption) {
    words_.answered = [this](const chips::BitList&) { UpdateSpiWordSent(); };
    transferred_ = context.outside.engine.wordTransferred.follow([this] {
        if (session_.ZT72516PanelActive == 1)
            UpdateSpiWordDisplay();
    });
    for (const char* shown : {"Btn_Write_WD_Refresh", "Btn_Ack_Safe_Cond", "Btn_Out_of_WD_Inhibit",
                              "Btn_INT_Request"}) // also while the panel is not active
        context.controls.onClick(shown, [this] { UpdateSpiWordDisplay(); });
    registerProcedures(context);
}

void WordBuilder::registerProcedures(const PanelContext& context) {
    forms::Form& form = context.form;
    HeldShape& shape = context.shape;
    form.procedure("SetDeviceParameters", [&shape] { shape.take(); });
    form.procedure("RestoreDeviceParameters", [&shape] { shape.restore(); });
    form.procedure("ClearWordToSend", [this] { ClearWordToSend(); });
    form.procedure("SetSpiAddress", [this](std::int32_t address) { SetSpiAddress(address); });
    form.procedure("SetReadCmd", [this] { SetReadCmd(); });
    form.procedure("SetWriteCmd", [this] { SetWriteCmd(); });
    form.procedure("SetFlagsCmd", [this] { SetFlagsCmd(); });
    form.procedure("SetSpiData", [this](const std::string& text) { SetSpiData(text); });
    form.procedure("UpdateSpiWordSent", [this] { UpdateSpiWordSent(); });
    form.procedure("UpdateSpiWordDisplay", [this] { UpdateSpiWordDisplay(); });
    form.procedure("UpdateSpiWordReceived", [this] { UpdateSpiWordReceived(); });
    form.procedure("HexCheck", [this](int key) { return HexCheck(key); });
}

void WordBuilder::ClearWordToSend() {
    words_.fill(0);
}

void WordBuilder::setBit(int bit, bool on) {
    std::vector<std::int16_t>& word = session_.WordToSend;
    word.resize(std::max<std::size_t>(word.size(), wordBits));
    word[static_cast<std::size_t>(bit)] = on ? 1 : 0;
}

void WordBuilder::setCommand(bool write, bool flags) {
    setBit(writeBit, write);
    setBit(flagsBit, flags);
}

void WordBuilder::SetSpiAddress(std::int32_t address) {
    for (int bit = dataBits; bit < writeBit; ++bit)
        setBit(bit, (address >> bit & 1) != 0);
}

void WordBuilder::SetSpiData(const std::string& text) {
    const std::int32_t data = toInt32(val(text));
    for (int bit = 0; bit < dataBits; ++bit)
        if ((data >> bit & 1) != 0)
            setBit(bit, true);
}

void WordBuilder::UpdateSpiWordSent() {
    SPIWordSent.setCaption(sentCaption + textOf(session_.WordToSend));
}

void WordBuilder::UpdateSpiWordDisplay() {
    display_.show(words_.answer());
    UpdateSpiWordReceived();
}

void WordBuilder::UpdateSpiWordReceived() {
    SPIWordRcvd.setCaption(receivedCaption + textOf(session_.WordReceived));
}

int WordBuilder::HexCheck(int key) {
    return filters_.hexKey(key);
}

} // namespace bitlux::zt72516
