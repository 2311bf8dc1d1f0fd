#include "support/temporary_folder.h"
#include "support/test_bench.h"

#include <string>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(JournalItem, RecordsUntilItIsChosenAgain) {
    const TemporaryFolder folder;
    const std::string file = folder.path("j.jsonl");
    TestBench bench("echo", {}, TestBench::WithDongle::Yes);
    bench.fileDialogs.answer(file);
    bench.choose("frmMain.itemRecordJournal");
    EXPECT_EQ(bench.program.mainForm().notices.now()->text, "Recording a journal to " + file);
    Session& session = bench.session();
    session.SPIWordLength = 16;
    session.WordToSend.assign(16, 0);
    session.WordToSend[0] = 0xC3; // whole bytes, as some panels give them
    session.WordToSend[8] = 0xA5;
    bench.program.engine().SendSPI();
    session.FirmwareUpdateRequest = true;
    bench.program.engine().SendSPI();
    bench.choose("frmMain.itemRecordJournal");
    EXPECT_FALSE(bench.program.journal().isOn());
    bench.program.engine().SendSPI();
    const std::string all = contentOf(file);
    EXPECT_EQ(all.substr(all.find(R"({"kind":"settings")")),
              R"({"kind":"settings","us":0,"bus":"dongle","bits":16,"type":1,"order":"msb",)"
              R"("cs":"low","di":"high","do":"high","clock":"1M","dongle_pins":0})"
              "\n"
              R"({"kind":"word","us":0,"took":2016,"sent":"A5C3","received":"0000"})"
              "\n"
              R"({"kind":"remark","us":4032,)"
              R"("text":"The dongle was told to enter its firmware update mode."})"
              "\n");
}

} // namespace
} // namespace bitlux::test
