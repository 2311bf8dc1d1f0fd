#include "panels/zt72537/last_word.h"

#include "platform/conversions.h"

#include <cstdint>

#include <fmt/format.h>

namespace bitlux::zt72537 {

namespace {

constexpr ControlRef sentLabel{"Label_Liste", 0};
constexpr ControlRef readLabel{"Label_Liste", 1};
constexpr ControlRef statusRow{"displayReadFlags", 24};
constexpr int statusBit = 4;
constexpr std::uint8_t active = 1;

} // namespace

LastWord::LastWord(const PanelContext& context)
    : controls_(context.controls),
      words_(context.words),
      session_(context.outside.session),
      engine_(context.outside.engine),
      leaving_(context.outside.engine.wordLeaving.follow([this] { showSent(); })),
      transferred_(context.outside.engine.wordTransferred.follow([this] { showReceived(); })) {}

void LastWord::showSent() {
    if (session_.ZT72537PanelActive != active || session_.WordToSend.empty())
        return;
    const int sent = session_.WordToSend.front();
    constexpr int bare = 15; // intended: a single F, where other digits have a leading zero
    controls_.get<forms::Label>(sentLabel).setCaption(
        fmt::format("Sent : {}{}", sent < bare ? "0" : "", hex(static_cast<std::uint64_t>(sent))));
}

void LastWord::showReceived() {
    if (session_.ZT72537PanelActive != active || !engine_.usesDongle())
        return;
    const std::uint8_t received = words_.answerByte(0);
    controls_.get<forms::Label>(readLabel).setCaption(fmt::format("Read : {:02X}", received));
    controls_.row(statusRow).show(received >> statusBit);
}

} // namespace bitlux::zt72537
