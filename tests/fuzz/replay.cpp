// Runs a fuzz target without the fuzzer's engine: over the files of a corpus, and over the same
// files damaged in a fixed way.
//
// usage: TARGET CORPUS_FOLDER DAMAGES_PER_FILE

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <fmt/format.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Cuts, doubles or changes a piece.
void damage(Bytes& bytes, std::mt19937& random) {
    if (bytes.empty())
        return;
    const auto upTo = [&random](std::size_t last) {
        return std::uniform_int_distribution<std::size_t>(0, last)(random);
    };
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(upTo(bytes.size() - 1));
    const auto length =
        std::min<std::ptrdiff_t>(bytes.end() - begin, static_cast<std::ptrdiff_t>(upTo(60)) + 1);
    switch (upTo(3)) {
    case 0:
        bytes.erase(begin, begin + length);
        break;
    case 1: {
        const Bytes piece(begin, begin + length);
        bytes.insert(begin, piece.begin(), piece.end());
        break;
    }
    case 2:
        *begin = static_cast<std::uint8_t>(upTo(255));
        break;
    default:
        bytes.resize(static_cast<std::size_t>(begin - bytes.begin()));
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return EXIT_FAILURE;
    std::mt19937 random(1); // the same damages in every run
    std::size_t inputs = 0;
    std::vector<std::filesystem::path> files(std::filesystem::directory_iterator(argv[1]), {});
    std::sort(files.begin(), files.end());
    for (const std::filesystem::path& file : files) {
        std::ifstream stream(file, std::ios::binary);
        const Bytes whole((std::istreambuf_iterator<char>(stream)), {});
        for (int n = 0; n <= std::atoi(argv[2]); ++n, ++inputs) {
            Bytes bytes = whole;
            for (int i = 0; i < n; i += 4)
                damage(bytes, random);
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        }
    }
    fmt::print("{} inputs\n", inputs);
    return inputs == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
