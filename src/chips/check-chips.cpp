#include "chips/chip_library.h"
#include "chips/chip_reader.h"

#include <cstdio>
#include <exception>
#include <string>

#include <fmt/format.h>

/// Checks the chip files named as arguments. The build runs it for the chips of the product.
int main(int count, char** arguments) try {
    using namespace bitlux::chips;
    int bad = 0;
    for (int i = 1; i < count; ++i) {
        const std::string file = arguments[i]; // NOLINT(*-pointer-arithmetic)
        const ChipFile result = readChipFile(file);
        if (!result.chip)
            fmt::print(stderr, "{}\n", describe(result.problems, file));
        bad += result.chip ? 0 : 1;
    }
    return bad == 0 ? 0 : 1;
} catch (const std::exception& failure) {
    std::fputs(failure.what(), stderr);
    return 1;
}
