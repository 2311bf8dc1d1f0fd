// Feeds bytes to the reader of configuration files as the program does, then saves what came of it.

#include "support/test_bench.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include <fmt/format.h>

namespace {

/// A file in memory that can be opened by its name.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : descriptor_(::memfd_create("input", MFD_CLOEXEC)) {
        if (::write(descriptor_, data, size) != static_cast<ssize_t>(size))
            throw std::runtime_error("no file in memory");
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    [[nodiscard]] std::string name() const { return fmt::format("/proc/self/fd/{}", descriptor_); }

private:
    int descriptor_;
};

void require(bool condition, const char* what) {
    if (!condition) {
        fmt::print(stderr, "{}\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bitlux;
    const MemoryFile file(data, size);
    test::TestBench bench;
    bench.configure("8");
    for (int box = 0; box < 8; ++box) // questions of Apply
        bench.boxes.answer(MessageBox::Answer::Ok);
    bench.fileDialogs.answer(file.name());
    bench.choose("frmMain.itemOpen");
    require(!bench.pointer.busy(), "the hourglass stayed");

    const test::TemporaryFolder folder;
    bench.fileDialogs.answer(folder.path("saved.spi"));
    bench.boxes.takeTexts();
    bench.choose("frmMain.itemSaveAs");
    const bool saved = !test::contentOf(folder.path("saved.spi")).empty();
    require(saved || bench.boxes.takeTexts().size() == 1, "a save failed without a word");
    return 0;
}
