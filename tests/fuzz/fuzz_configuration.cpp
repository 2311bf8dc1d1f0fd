// Feeds bytes to the reader of configuration files as the program does, then saves what came of it.

#include "memory_file.h"
#include "support/test_bench.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bitlux;
    const fuzz::MemoryFile file(data, size);
    test::TestBench bench;
    bench.configure("8");
    for (int box = 0; box < 8; ++box) // questions of Apply
        bench.boxes.answer(MessageBox::Answer::Ok);
    bench.fileDialogs.answer(file.name());
    bench.choose("frmMain.itemOpen");
    fuzz::require(!bench.pointer.busy(), "the hourglass stayed");

    const test::TemporaryFolder folder;
    bench.fileDialogs.answer(folder.path("saved.spi"));
    bench.boxes.takeTexts();
    bench.choose("frmMain.itemSaveAs");
    const bool saved = !test::contentOf(folder.path("saved.spi")).empty();
    fuzz::require(saved || bench.boxes.takeTexts().size() == 1, "a save failed without a word");
    return 0;
}
