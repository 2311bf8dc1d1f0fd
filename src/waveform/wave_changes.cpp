#include "waveform/wave_changes.h"

#include "platform/failure.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

std::string withoutBlanks(const std::string& name) {
    std::string result;
    for (const char character : name)
        result += character > ' ' && character <= '~' ? character : '_';
    return result;
}

} // namespace

WaveChanges::WaveChanges(const std::deque<WordRecord>& words, std::size_t first) {
    if (first >= words.size())
        throw Failure(Failure::Kind::OutOfRange, "There is no word that could be saved.");
    for (std::size_t i = first; i < words.size(); ++i)
        append(waveformOf(words[i]));
    const std::int64_t origin = changes.empty() ? begins.front() : changes.front().at;
    for (Change& change : changes)
        change.at -= origin;
    for (std::int64_t& begin : begins)
        begin -= origin;
    end -= origin;
}

void WaveChanges::append(const Waveform& waveform) {
    std::vector<Change> own;
    std::vector<std::pair<std::size_t, Level>> before;
    for (std::size_t i = 0; i < waveform.lines.size(); ++i) {
        const std::size_t line = lineOf(waveform, i);
        if (waveform.lines[i].before != Level::Unknown)
            before.emplace_back(line, waveform.lines[i].before);
        for (const WaveLine::Edge& edge : waveform.lines[i].edges)
            own.push_back({waveform.origin + edge.at, line, edge.to});
    }
    std::stable_sort(own.begin(), own.end(),
                     [](const Change& one, const Change& other) { return one.at < other.at; });
    const std::int64_t start = own.empty() ? waveform.origin : own.front().at;
    const std::int64_t late = begins.empty() ? 0 : std::max<std::int64_t>(end - start, 0);
    const auto add = [this](const Change& change) {
        if (levels_[change.line] != change.to)
            changes.push_back(change);
        levels_[change.line] = change.to;
    };
    for (const auto& [line, level] : before) // where the wiring changed between two words
        add({start + late, line, level});
    for (const Change& change : own)
        add({change.at + late, change.line, change.to});
    begins.push_back(waveform.origin + late);
    end = waveform.origin + waveform.end + late;
    asCommanded = asCommanded || waveform.asCommanded;
}

std::size_t WaveChanges::lineOf(const Waveform& waveform, std::size_t line) {
    const WaveLine& source = waveform.lines[line];
    if (line < Waveform::firstExtra && line < lines.size())
        return line;
    if (line >= Waveform::firstExtra) {
        const auto found =
            std::find(names_.begin() + Waveform::firstExtra, names_.end(), source.name);
        if (found != names_.end())
            return static_cast<std::size_t>(found - names_.begin());
    }
    lines.push_back({freeName(withoutBlanks(source.name)), source.before});
    names_.push_back(source.name);
    levels_.push_back(source.before);
    return lines.size() - 1;
}

std::string WaveChanges::freeName(const std::string& name) const {
    const auto isTaken = [this](const std::string& wanted) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const Line& line) { return line.name == wanted; });
    };
    std::string result = name;
    for (int n = 2; isTaken(result); ++n)
        result = fmt::format("{}_{}", name, n);
    return result;
}

} // namespace bitlux
