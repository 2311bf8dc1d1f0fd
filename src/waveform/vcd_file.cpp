#include "platform/text_file.h"
#include "waveform/wave_changes.h"
#include "waveform/waveform_files.h"

#include <iterator>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// Idle time before the first change and after the last word, so that a reader sees the levels.
constexpr std::int64_t marginTime = 1000;

/// An identifier of printable characters, as short as possible: "!" to "~", then "!!" and so on.
std::string identifierOf(std::size_t line) {
    constexpr std::size_t characters = '~' - '!' + 1;
    std::string identifier;
    for (std::size_t left = line + 1; left > 0; left = (left - 1) / characters)
        identifier.insert(0, 1, static_cast<char>('!' + (left - 1) % characters));
    return identifier;
}

char valueOf(Level level) {
    return level == Level::Unknown ? 'x' : level == Level::High ? '1' : '0';
}

std::string vcdText(const WaveChanges& waves) {
    std::string text = "$version Bitlux Forge $end\n";
    auto out = std::back_inserter(text);
    if (waves.asCommanded)
        text += "$comment Words through the dongle as commanded, not as measured $end\n";
    text += "$timescale 1ns $end\n$scope module spi $end\n";
    for (std::size_t i = 0; i < waves.lines.size(); ++i)
        fmt::format_to(out, "$var wire 1 {} {} $end\n", identifierOf(i), waves.lines[i].name);
    text += "$upscope $end\n$enddefinitions $end\n#0\n$dumpvars\n";
    for (std::size_t i = 0; i < waves.lines.size(); ++i)
        fmt::format_to(out, "{}{}\n", valueOf(waves.lines[i].before), identifierOf(i));
    text += "$end\n";
    std::int64_t now = -1;
    for (const WaveChanges::Change& change : waves.changes) {
        if (change.at != now)
            fmt::format_to(out, "#{}\n", change.at + marginTime);
        now = change.at;
        fmt::format_to(out, "{}{}\n", valueOf(change.to), identifierOf(change.line));
    }
    fmt::format_to(out, "#{}\n", waves.end + 2 * marginTime);
    return text;
}

} // namespace

void exportVcd(const std::deque<WordRecord>& words, const std::string& fileName) {
    replaceFile(fileName, vcdText(WaveChanges(words, 0)));
}

} // namespace bitlux
