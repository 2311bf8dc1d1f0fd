// Decoding a word of a chip, with its text: each write with several values, each read and each
// command.

#include "chips/chip_library.h"
#include "platform/clock.h"
#include "registers/word_decoder.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int repetitions = 31;
constexpr double limit = 2; // microseconds

std::vector<std::uint64_t> wordsOf(const RegisterCatalog& catalog) {
    const chips::WordFormat& format = catalog.chip().word;
    std::vector<std::uint64_t> words;
    for (const RegisterItem& item : catalog.items()) {
        if (item.readable())
            words.push_back(
                format.word(item.view->operation, item.view->address, item.view->extra));
        if (item.writable())
            for (const std::uint64_t value : {0x000000U, 0x5A5A5AU, 0xFFFFFFU})
                words.push_back(format.word(chips::Operation::Write, item.owner->address,
                                            (value & item.mask()) | item.owner->alwaysWritten));
    }
    for (const chips::Command& any : catalog.chip().commands)
        if (any.word)
            words.push_back(*any.word);
    return words;
}

} // namespace

int main() {
    const SystemClock clock;
    bool within = true;
    for (const char* name : {"zt72516", "zt72518"}) {
        const RegisterCatalog catalog(chips::embeddedChip(name));
        const WordDecoder decoder(catalog);
        const std::vector<std::uint64_t> words = wordsOf(catalog);
        std::vector<double> times;
        std::size_t unknown = 0;
        for (int n = 0; n < repetitions; ++n) {
            const std::int64_t start = clock.nanoseconds();
            for (const std::uint64_t word : words)
                unknown += decoder.decode(word).text().empty() ? 1 : 0;
            times.push_back(static_cast<double>(clock.nanoseconds() - start) / 1e3 /
                            static_cast<double>(words.size()));
        }
        std::sort(times.begin(), times.end());
        const double median = times[times.size() / 2];
        fmt::print("decoding: {} words of the {} in {:.2f} us each (limit {:.0f} us){}\n",
                   words.size(), name, median, limit, unknown == 0 ? "" : ", but some are unknown");
        within = within && median <= limit && unknown == 0;
    }
    return within ? 0 : 1;
}
