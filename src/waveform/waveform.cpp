#include "waveform/waveform.h"

#include "waveform/word_drawing.h"

#include <algorithm>
#include <functional>

namespace bitlux {

namespace {

/// Hexadecimal, "?" for a digit with an unknown bit.
std::string hexText(const Waveform& waveform,
                    const std::function<std::optional<bool>(const WaveBit&)>& valueOf) {
    constexpr int unknown = -1;
    std::vector<int> digits(static_cast<std::size_t>((waveform.length + 3) / 4), 0);
    int known = 0;
    for (const WaveBit& bit : waveform.bits) {
        int& digit = digits[digits.size() - 1 - static_cast<std::size_t>(bit.number / 4)];
        const std::optional<bool> value = valueOf(bit);
        if (!value)
            digit = unknown;
        else if (digit != unknown && *value)
            digit |= 1 << (bit.number % 4);
        ++known;
    }
    std::string text;
    for (const int digit : digits)
        text += known < waveform.length || digit == unknown
                    ? '?'
                    : "0123456789ABCDEF"[static_cast<std::size_t>(digit)];
    return text;
}

} // namespace

Level WaveLine::levelAt(std::int64_t at) const {
    const auto after =
        std::upper_bound(edges.begin(), edges.end(), at,
                         [](std::int64_t time, const Edge& edge) { return time < edge.at; });
    return after == edges.begin() ? before : std::prev(after)->to;
}

Waveform waveformOf(const WordRecord& record) {
    Waveform waveform{.number = record.number,
                      .asCommanded = record.shape.onDongle,
                      .complete = record.complete,
                      .rebuilt = record.rebuilt,
                      .type = record.shape.type,
                      .length = record.shape.length,
                      .msbFirst = record.shape.msbFirst,
                      .selectedWhenHigh = record.shape.selectedWhenHigh};
    if (record.shape.onDongle)
        drawCommandedWord(record, waveform);
    else
        drawPortWord(record, waveform);
    waveform.sent = hexText(waveform, [](const WaveBit& bit) { return std::optional(bit.sent); });
    waveform.received = hexText(waveform, [](const WaveBit& bit) { return bit.received; });
    return waveform;
}

} // namespace bitlux
