#include "panels/zt72518/last_word_labels.h"

#include "platform/conversions.h"

#include <array>
#include <bit>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr const char* labels = "Label_Liste";
constexpr std::uint8_t active = 1;
constexpr std::array sentLabels{0, 1, 2};
constexpr std::array receivedLabels{3, 7, 8};
constexpr const char* decodedNote =
    "Decod the last SPI command sent (Be carefull to the \"auto-readings\")";

std::string digit(int value) {
    return hex(static_cast<std::uint64_t>(value));
}

} // namespace

LastWordLabels::LastWordLabels(const PanelContext& context)
    : controls_(context.controls),
      session_(context.outside.session),
      engine_(context.outside.engine),
      leaving_(context.outside.engine.wordLeaving.follow([this] { showSent(); })),
      transferred_(context.outside.engine.wordTransferred.follow([this] { showReceived(); })) {
    for (const int label : sentLabels)
        controls_.addLabel({labels, label}, "Sent : ").setTooltip(decodedNote);
    for (const int label : receivedLabels)
        controls_.addLabel({labels, label}, "Received : ").setTooltip(decodedNote);
}

void LastWordLabels::show(int label, const std::string& text) const {
    controls_.get<forms::Label>({labels, label}).setCaption(text);
}

int LastWordLabels::sent(std::size_t element) const {
    return element < session_.WordToSend.size() ? session_.WordToSend[element] : 0;
}

void LastWordLabels::showSent() {
    if (session_.ZT72518PanelActive != active)
        return;
    const int low = sent(0);
    const std::string text =
        fmt::format("Sent : {} - {}{}", digit(sent(8)), low < 16 ? "0" : "", digit(low));
    for (const int label : sentLabels)
        show(label, text);
}

void LastWordLabels::showReceived() {
    if (session_.ZT72518PanelActive != active)
        return;
    if (engine_.usesDongle()) {
        const std::string text = fmt::format("Received : {}{} - {}{}", digit(nibble(12)),
                                             digit(nibble(8)), digit(nibble(4)), digit(nibble(0)));
        for (const int label : receivedLabels)
            show(label, text);
    }
    // Intended: this one counts the ones of each group, from the lowest on.
    show(receivedLabels.front(), fmt::format("Received : {}{} - {}{}", digit(ones(0)),
                                             digit(ones(4)), digit(ones(8)), digit(ones(12))));
}

int LastWordLabels::nibble(int lowBit) const {
    int value = 0;
    auto element = static_cast<std::size_t>(lowBit);
    for (int i = 0; i < 4; ++i, ++element)
        if (element < session_.WordReceived.size() && session_.WordReceived[element] != 0)
            value |= 1 << i;
    return value;
}

int LastWordLabels::ones(int lowBit) const {
    return std::popcount(static_cast<unsigned>(nibble(lowBit)));
}

} // namespace bitlux::zt72518
