// Feeds bytes to the reader of chip files. What it takes must make words and pages; what it refuses
// has problems with a place in the text.

#include "chips/chip_reader.h"
#include "memory_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

using namespace bitlux;

void use(const chips::Chip& chip) {
    for (const chips::Register& any : chip.registers) {
        fuzz::require(any.width() > 0 && any.width() <= 64, "a width");
        const std::uint64_t word =
            chip.word.word(chips::Operation::Write, any.address, any.alwaysWritten);
        fuzz::require((word & ~chip.word.mask()) == 0, "a word that is too long");
        fuzz::require(!any.writable() || chip.word.operationOf(word).has_value(),
                      "an unknown word");
        for (const chips::Field& field : any.fields)
            fuzz::require(chips::BitList::parse(field.bits.text()).has_value(), "bits");
    }
    for (const std::string& page : chip.registerPages())
        fuzz::require(page.size() <= chips::longestFile, "a page");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size); // NOLINT(*-cast)
    const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
    const chips::ChipFile file = chips::readChip(text, "fuzz.toml");
    fuzz::require((file.chip == nullptr) != file.problems.empty(), "neither chip nor problem");
    for (const chips::Problem& problem : file.problems) {
        fuzz::require(!problem.text.empty() && !problem.advice.empty(), "a problem without a text");
        fuzz::require(problem.at.line >= 1 && problem.at.line <= lines && problem.at.column >= 1,
                      "a problem without a place");
    }
    if (file.chip)
        use(*file.chip);
    return 0;
}
