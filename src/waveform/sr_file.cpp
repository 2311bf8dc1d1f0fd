#include "platform/text_file.h"
#include "waveform/wave_changes.h"
#include "waveform/waveform_files.h"
#include "waveform/zip_archive.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <vector>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::int64_t second = 1'000'000'000;
/// Samples before the first change and after the last word.
constexpr std::int64_t marginTicks = 2;
constexpr std::size_t chunkBytes = std::size_t{4} << 20U; // as the programs of this format write

std::int64_t exactTick(const WaveChanges& waves) {
    std::int64_t tick = second;
    for (const WaveChanges::Change& change : waves.changes)
        tick = std::gcd(tick, change.at);
    return std::gcd(tick, waves.end);
}

/// The shortest distance of changes that are not simultaneous.
std::int64_t shortestGap(const WaveChanges& waves) {
    std::int64_t shortest = second;
    for (std::size_t i = 1; i < waves.changes.size(); ++i)
        if (const std::int64_t gap = waves.changes[i].at - waves.changes[i - 1].at; gap > 0)
            shortest = std::min(shortest, gap);
    return shortest;
}

/// Sample periods of round rates, the shortest first.
constexpr std::array<std::int64_t, 16> roundTicks{
    1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000, 50000, 100000};

std::size_t bytesOfSample(const WaveChanges& waves) {
    return (waves.lines.size() + 7) / 8;
}

std::int64_t samplesOf(const WaveChanges& waves, std::int64_t tick) {
    return waves.end / tick + 2 * marginTicks;
}

bool fits(const WaveChanges& waves, std::int64_t tick, std::size_t mostSamples) {
    return static_cast<std::size_t>(samplesOf(waves, tick)) * bytesOfSample(waves) <= mostSamples;
}

/// The shortest period of a round rate that fits, or else the longest that separates the edges.
std::int64_t coarserTick(const WaveChanges& waves, std::size_t mostSamples) {
    const std::int64_t longest = shortestGap(waves);
    std::int64_t best = 1;
    for (const std::int64_t tick : roundTicks) {
        if (tick > longest)
            break;
        best = tick;
        if (fits(waves, tick, mostSamples))
            break;
    }
    return best;
}

std::string metadata(const WaveChanges& waves, std::int64_t tick) {
    std::string text = fmt::format("[global]\nsigrok version=0.5.2\n\n[device 1]\n"
                                   "capturefile=logic-1\ntotal probes={}\nsamplerate={}\n"
                                   "total analog=0\n",
                                   waves.lines.size(), second / tick);
    for (std::size_t i = 0; i < waves.lines.size(); ++i)
        text += fmt::format("probe{}={}\n", i + 1, waves.lines[i].name);
    return text + fmt::format("unitsize={}\n", bytesOfSample(waves));
}

/// Writes samples to the archive in chunks.
class Samples {
public:
    Samples(ZipArchive& archive, const WaveChanges& waves)
        : archive_(archive), levels_(bytesOfSample(waves)) {
        chunk_.reserve(chunkBytes);
        for (std::size_t i = 0; i < waves.lines.size(); ++i)
            put(i, firstKnown(waves, i));
    }

    void put(std::size_t line, bool high) {
        std::uint8_t& byte = levels_[line / 8];
        const unsigned mask = 1U << line % 8;
        byte = static_cast<std::uint8_t>(high ? byte | mask : byte & ~mask);
    }

    /// Repeats the present levels up to this sample, exclusive.
    void fillTo(std::int64_t sample) {
        while (written_ < sample) {
            const std::size_t room = (chunkBytes - chunk_.size()) / levels_.size();
            const std::int64_t count = std::min(sample - written_, static_cast<std::int64_t>(room));
            repeat(static_cast<std::size_t>(count));
            written_ += count;
            if (chunk_.size() + levels_.size() > chunkBytes)
                flush();
        }
    }

    void flush() {
        if (!chunk_.empty())
            archive_.add(fmt::format("logic-1-{}", ++chunks_), chunk_);
        chunk_.clear();
    }

private:
    void repeat(std::size_t samples) {
        if (levels_.size() == 1) // most files: as fast as memory
            chunk_.insert(chunk_.end(), samples, levels_.front());
        else
            for (; samples > 0; --samples)
                chunk_.insert(chunk_.end(), levels_.begin(), levels_.end());
    }

    static bool firstKnown(const WaveChanges& waves, std::size_t line) {
        if (waves.lines[line].before != Level::Unknown)
            return waves.lines[line].before == Level::High;
        for (const WaveChanges::Change& change : waves.changes)
            if (change.line == line)
                return change.to == Level::High;
        return false;
    }

    ZipArchive& archive_;
    std::vector<std::uint8_t> chunk_;
    std::vector<std::uint8_t> levels_; ///< of all lines, the first in the lowest bit
    std::int64_t written_ = 0;
    int chunks_ = 0;
};

std::string sessionFile(const WaveChanges& waves, std::int64_t tick) {
    ZipArchive archive;
    archive.add("version", "2");
    archive.add("metadata", metadata(waves, tick));
    Samples samples(archive, waves);
    for (const WaveChanges::Change& change : waves.changes) {
        samples.fillTo(change.at / tick + marginTicks);
        samples.put(change.line, change.to == Level::High);
    }
    samples.fillTo(samplesOf(waves, tick));
    samples.flush();
    return archive.finish();
}

/// The first of the words that fit with this period.
std::size_t firstThatFits(const WaveChanges& waves, std::int64_t tick, std::size_t mostSamples) {
    const auto room =
        static_cast<std::int64_t>(mostSamples / bytesOfSample(waves)) - 2 * marginTicks;
    const auto first =
        std::lower_bound(waves.begins.begin(), waves.begins.end(), waves.end - room * tick);
    return static_cast<std::size_t>(first - waves.begins.begin());
}

} // namespace

SampledWords exportSr(const std::deque<WordRecord>& words, const std::string& fileName,
                      std::size_t mostSamples) {
    std::size_t first = 0;
    for (;;) {
        const WaveChanges waves(words, first);
        std::int64_t tick = exactTick(waves);
        const bool exact = fits(waves, tick, mostSamples);
        if (!exact)
            tick = coarserTick(waves, mostSamples);
        if (fits(waves, tick, mostSamples) || first + 1 == words.size()) {
            replaceFile(fileName, sessionFile(waves, tick));
            return {.words = words.size() - first, .tick = tick, .exact = exact};
        }
        // Extra pins may have changed long before the first word that is kept.
        first += std::max<std::size_t>(firstThatFits(waves, tick, mostSamples), 1);
        first = std::min(first, words.size() - 1);
    }
}

} // namespace bitlux
