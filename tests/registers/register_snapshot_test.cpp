#include "register_chip.h"

#include "platform/failure.h"
#include "registers/register_snapshot.h"
#include "support/temporary_folder.h"

#include <tuple>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr const char* file = R"([snapshot]
chip = "pump"

[values]
"Mode" = 0x5B # Watch it, Time = 3, State = Run = on
"Speed" = 0x10
"Log" = 0x2 # Full
)";

TEST(RegisterSnapshot, IsAFileThatAPersonCanRead) {
    const TemporaryFolder folder;
    const RegisterCatalog catalog = registerCatalog();
    const RegisterSnapshot snapshot{.chip = "pump",
                                    .values = {{"Mode", 0x5B}, {"Speed", 0x10}, {"Log", 2}}};
    EXPECT_EQ(snapshotText(catalog, snapshot), file);
    const std::string name = folder.path() + "/s.toml";
    saveSnapshot(catalog, snapshot, name);
    EXPECT_TRUE(isSnapshotFile(name));
    EXPECT_FALSE(isSnapshotFile(folder.write("chip.toml", registerChip)));
    const RegisterSnapshot read = fitted(catalog, readSnapshot(name), name);
    EXPECT_EQ(snapshotText(catalog, read), file); // in the order of the chip again
}

TEST(RegisterSnapshot, KeepsAllBitsOfAWideRegister) {
    const RegisterCatalog catalog = registerCatalog(R"([chip]
title = "Wide"
[word]
bits = 64
data = "63:0"
[[register]]
title = "All \"64\""
address = 0
access = "read only"
width = 64
)");
    const TemporaryFolder folder;
    const RegisterSnapshot snapshot{.chip = "pump",
                                    .values = {{"All \"64\"", 0xFEDC'BA98'7654'3210}}};
    const std::string name = folder.path() + "/s.toml";
    saveSnapshot(catalog, snapshot, name);
    EXPECT_EQ(fitted(catalog, readSnapshot(name), name).values.at(0).value, 0xFEDC'BA98'7654'3210);
}

TEST(RegisterSnapshot, ReportsMistakesInAFile) {
    const TemporaryFolder folder;
    const RegisterCatalog catalog = registerCatalog();
    const std::string head = "[snapshot]\nchip = \"pump\"\n[values]\n";
    const std::vector<std::tuple<std::string, std::string>> rows{
        {head + "Mood = 1\n", ": pump has no register \"Mood\""},
        {head + "Mode = 0x100\n", ": 0x100 does not fit: Mode has 8 bits"},
        {head + "Mode = 1\nmode = 1\n", ": Mode is there twice"},
        {head + "Mode = -1\n", ":4:8: "},
        {head + "Mode = = 1\n", ":4:"},
        {"[snapshot]\nchip = \"lamp\"\n", ": this is a snapshot of lamp, not of pump"},
        {"[values]\nMode = 1\n", ": "},
        {"[snapshot]\nchip = \"pump\"\nmore = 1\n", ":3:1: there is no key `more` here."},
    };
    for (const auto& [text, wanted] : rows) {
        const std::string name = folder.write("bad.toml", text);
        try {
            static_cast<void>(fitted(catalog, readSnapshot(name), name));
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(std::string(failure.what()).rfind(name + wanted, 0), 0U) << failure.what();
        }
    }
}

TEST(RegisterSnapshot, DiffersWhereValuesDoButNotInVolatileOnes) {
    const RegisterCatalog catalog = registerCatalog();
    const RegisterSnapshot before{
        .chip = "pump", .values = {{"Mode", 1}, {"Speed", 2}, {"Code", 3}, {"Code state", 0}}};
    const RegisterSnapshot after{
        .chip = "pump", .values = {{"Mode", 5}, {"Log", 2}, {"Code", 4}, {"Code state", 1}}};
    std::string found;
    for (const SnapshotDifference& any : differences(catalog, before, after))
        found += fmt::format("{} {}->{} ({:X}) ", any.item->name, any.before ? "1" : "-",
                             any.after ? "1" : "-", any.bits());
    EXPECT_EQ(found, "Mode 1->1 (4) Speed 1->- (0) Log -->1 (0) Code state 1->1 (1) ");
}

} // namespace
} // namespace bitlux::test
