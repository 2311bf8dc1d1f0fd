#include "waveform/line_builder.h"

#include <algorithm>

namespace bitlux {

namespace {

Level levelIn(LineLevels levels, unsigned bit) {
    return ((levels >> bit) & 1U) != 0 ? Level::High : Level::Low;
}

} // namespace

LineBuilder::LineBuilder(Waveform& waveform, LineLevels before,
                         const std::array<std::string, 12>& extraPins)
    : waveform_(waveform), levels_(before) {
    waveform.lines = {{"CS", levelIn(before, chipSelectBit), {}},
                      {"CLK", levelIn(before, clockBit), {}},
                      {"DI", levelIn(before, dataInBit), {}},
                      {"DO", Level::Unknown, {}}};
    for (unsigned n = 0; n < extraPins.size(); ++n) {
        const std::string& name = extraPins.at(n);
        const auto isNamesake = [&](unsigned bit) { // pins with the same name move together
            return extraPins.at(bit - firstExtraBit) == name;
        };
        if (name.empty() || std::any_of(extraBits_.begin(), extraBits_.end(), isNamesake))
            continue;
        extraBits_.push_back(firstExtraBit + n);
        waveform.lines.push_back({name, levelIn(before, firstExtraBit + n), {}});
    }
}

void LineBuilder::write(std::int64_t at, LineLevels levels) {
    lastWrite_ = at;
    const auto changed = static_cast<LineLevels>(levels ^ levels_);
    levels_ = levels;
    if (changed == 0)
        return;
    for (const unsigned bit : {chipSelectBit, clockBit, dataInBit})
        put(waveform_.lines[bit], at, levelIn(levels, bit));
    for (std::size_t i = 0; i < extraBits_.size(); ++i)
        put(waveform_.lines[Waveform::firstExtra + i], at, levelIn(levels, extraBits_[i]));
}

void LineBuilder::sample(bool high) {
    put(waveform_.lines[Waveform::dataOut], lastWrite_, high ? Level::High : Level::Low);
}

void LineBuilder::put(WaveLine& line, std::int64_t at, Level level) {
    if ((line.edges.empty() ? line.before : line.edges.back().to) != level)
        line.edges.push_back({at, level});
}

void LineBuilder::finish() {
    auto& lines = waveform_.lines;
    lines.erase(std::remove_if(lines.begin() + Waveform::firstExtra, lines.end(),
                               [](const WaveLine& line) { return line.edges.empty(); }),
                lines.end());
    for (WaveLine& line : lines)
        for (WaveLine::Edge& edge : line.edges)
            edge.at -= waveform_.origin;
    for (WaveBit& bit : waveform_.bits)
        for (std::int64_t* at :
             {&bit.sampledAt, &bit.dataIn.from, &bit.dataIn.to, &bit.dataOut.from, &bit.dataOut.to})
            *at -= waveform_.origin;
    waveform_.end -= waveform_.origin;
}

} // namespace bitlux
