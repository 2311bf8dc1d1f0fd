// Feeds bytes to the import of register maps. What it takes must be a chip's file that the program
// reads; what it refuses has a problem with a text.

#include "chips/chip_reader.h"
#include "mapimport/import_map.h"
#include "memory_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

using namespace bitlux;

mapimport::ImportOptions wholeWord() {
    mapimport::ImportOptions options;
    options.word.bits = 64;
    options.word.address = chips::BitList::range(32, 31);
    options.word.data = chips::BitList::range(0, 32);
    options.word.write = std::uint64_t{1} << 63;
    return options;
}

void checkPlaces(const chips::Problems& problems, std::ptrdiff_t lines) {
    for (const chips::Problem& problem : problems) {
        fuzz::require(!problem.text.empty() && !problem.advice.empty(), "a problem without a text");
        fuzz::require(problem.at.line <= lines, "a place beyond the text");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size); // NOLINT(*-cast)
    const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
    const mapimport::ImportedMap made = mapimport::importMap(text, "fuzz.svd", wholeWord());
    fuzz::require(made.text.empty() != made.problems.empty(), "neither chip nor problem");
    checkPlaces(made.notes, lines);
    checkPlaces(made.problems, lines);
    if (made.text.empty())
        return 0;
    fuzz::require(made.text.size() <= chips::longestFile, "a file that is too long");
    const chips::ChipFile chip = chips::readChip(made.text, "fuzz.toml");
    fuzz::require(chip.chip != nullptr, "a file that is no chip");
    fuzz::require(chip.chip->registers.size() == made.registers, "registers that were lost");
    return 0;
}
