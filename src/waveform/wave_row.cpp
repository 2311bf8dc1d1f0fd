#include "waveform/wave_row.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

constexpr std::int64_t gapShare = 8; ///< of the longest word

void put(WaveLine& line, std::int64_t at, Level level) {
    if ((line.edges.empty() ? line.before : line.edges.back().to) != level)
        line.edges.push_back({at, level});
}

/// A share of a length, like `part` of `whole`.
std::int64_t scaled(std::int64_t length, std::int64_t part, std::int64_t whole) {
    return static_cast<std::int64_t>(static_cast<double>(length) * static_cast<double>(part) /
                                     static_cast<double>(whole));
}

} // namespace

WaveRow::WaveRow(std::vector<Waveform> waveforms) {
    for (const Waveform& any : waveforms)
        longest = std::max(longest, any.end);
    gap = std::max<std::int64_t>(longest / gapShare, 1);
    for (Waveform& any : waveforms) {
        Word word{.waveform = std::move(any)};
        if (!words.empty()) {
            const Word& last = words.back();
            word.at = end() + gap;
            // As commanded, a word may end after the begin of the next one.
            word.begin = std::max(word.waveform.origin - words.front().waveform.origin,
                                  last.begin + last.waveform.end);
        }
        words.push_back(std::move(word));
        addLines(words.size() - 1);
    }
}

void WaveRow::addLines(std::size_t word) {
    const Waveform& waveform = words[word].waveform;
    const std::int64_t at = words[word].at;
    const std::int64_t idle = std::max<std::int64_t>(idleBefore(word), 1);
    const auto place = [&](std::int64_t time) { // edges before a word are in the gap before it
        if (word == 0 || time >= 0)
            return at + time;
        return at - scaled(gap, std::min(-time, idle), idle);
    };
    for (std::size_t i = 0; i < waveform.lines.size(); ++i) {
        WaveLine& line = lineFor(waveform, i);
        if (word > 0) // DO is unknown, and the wiring may differ
            put(line, endOf(word - 1), waveform.lines[i].before);
        for (const WaveLine::Edge& edge : waveform.lines[i].edges)
            put(line, place(edge.at), edge.to);
    }
}

WaveLine& WaveRow::lineFor(const Waveform& waveform, std::size_t line) {
    const WaveLine& source = waveform.lines[line];
    if (line < Waveform::firstExtra && line < lines.size())
        return lines[line];
    for (std::size_t i = Waveform::firstExtra; i < lines.size(); ++i)
        if (lines[i].name == source.name)
            return lines[i];
    return lines.emplace_back(WaveLine{source.name, source.before, {}});
}

std::int64_t WaveRow::idleBefore(std::size_t word) const {
    if (word == 0)
        return 0;
    const Word& last = words[word - 1];
    return words[word].begin - last.begin - last.waveform.end;
}

std::size_t WaveRow::wordAt(std::int64_t at) const {
    std::size_t word = words.size() - 1;
    while (word > 0 && words[word].at > at)
        --word;
    return word;
}

std::int64_t WaveRow::timeAt(std::int64_t at) const {
    const std::size_t word = wordAt(at);
    const Word& here = words[word];
    const std::int64_t behind = at - endOf(word);
    if (behind <= 0 || word + 1 == words.size())
        return here.begin + at - here.at;
    return here.begin + here.waveform.end + scaled(idleBefore(word + 1), behind, gap);
}

} // namespace bitlux
