#include "register_chip.h"

#include "platform/failure.h"
#include "registers/register_access.h"

#include <map>
#include <optional>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Answers reads from its values and keeps what is written, but for the bits that are stuck at 0.
class Wire {
public:
    explicit Wire(const std::string& chip = registerChip) : catalog(registerCatalog(chip)) {}

    std::uint64_t exchange(std::uint64_t word) {
        words += fmt::format("{:04X} ", word);
        const auto address = static_cast<int>(word >> 8 & 0x1F);
        if ((word & 0x8000) != 0)
            values[address] = word & 0xFF & ~stuck;
        const std::uint64_t late = last;
        last = (word & 0x4000) != 0 ? 0xE002 : 0xE000 | values[address];
        return answersNext ? late : last;
    }
    std::string takeWords() { return std::exchange(words, {}); }

    RegisterCatalog catalog;
    std::map<int, std::uint64_t> values{{1, 0x22}, {2, 0x10}, {3, 0x7}, {4, 0x1}, {6, 0x99}};
    std::uint64_t stuck = 0;
    std::uint64_t last = 0;
    bool answersNext = false;
    std::string words;
    RegisterAccess access{catalog, [this](std::uint64_t word) { return exchange(word); }};
};

std::string failureOf(const std::function<void()>& action) {
    try {
        action();
        return "none";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

TEST(RegisterAccess, ReadsAndWritesWithTheWordsOfTheChip) {
    Wire wire;
    EXPECT_EQ(wire.access.read(wire.catalog.item("mode")), 0x22U);
    EXPECT_EQ(wire.access.read(wire.catalog.item("Code state")), 2U); // status is no part of it
    EXPECT_EQ(wire.takeWords(), "0100 4600 ");
    wire.access.write(wire.catalog.item("Speed"), 0xFF);
    EXPECT_EQ(wire.takeWords(), "827F "); // bit 7 is never written
    wire.access.write(wire.catalog.item("Speed"), 0);
    EXPECT_EQ(wire.takeWords(), "8240 "); // bit 6 always
    EXPECT_EQ(failureOf([&] { wire.access.read(wire.catalog.item("Key")); }), "Key cannot be read");
    EXPECT_EQ(failureOf([&] { wire.access.write(wire.catalog.item("Log"), 0); }),
              "Log cannot be written");
    EXPECT_EQ(failureOf([&] { wire.access.write(wire.catalog.item("Faults"), 8); }),
              "0x8 does not fit: Faults has 3 bits");
    EXPECT_EQ(wire.takeWords(), "");
}

TEST(RegisterAccess, FetchesAnAnswerThatComesWithTheNextWord) {
    std::string chip = registerChip;
    chip.replace(chip.find("type = 2"), 8, "type = 2\nanswer = \"next word\"\nfetch = 0x1F00");
    Wire wire(chip);
    wire.answersNext = true;
    EXPECT_EQ(wire.access.read(wire.catalog.item("Mode")), 0x22U);
    EXPECT_EQ(wire.takeWords(), "0100 1F00 ");
}

TEST(RegisterAccess, ChangesFieldsAndLeavesTheOthers) {
    Wire wire;
    const RegisterItem& mode = wire.catalog.item("Mode");
    EXPECT_EQ(wire.access.changed(mode, {{"State", "run = on"}, {"Time", "1"}}), 0x33U);
    EXPECT_EQ(wire.takeWords(), "0100 ");
    wire.values[1] = 0xFF;
    EXPECT_EQ(wire.access.changed(mode, {{"State", "0"}}), 0xF8U);
    EXPECT_EQ(wire.access.changed(mode, {{"State", "0"}}, RegisterAccess::Base::Reset), 0x20U);
    wire.takeWords();
    // A read-modify-write would clear every fault that is there.
    EXPECT_EQ(wire.access.changed(wire.catalog.item("Faults"), {{"Short", "1"}}), 2U);
    EXPECT_EQ(wire.takeWords(), "");
    const std::vector<FieldChange> lock{{"Lock", "shut"}};
    EXPECT_EQ(
        failureOf([&] { static_cast<void>(wire.access.changed(wire.catalog.item("Key"), lock)); }),
        "Key cannot be read, so that its other fields are not known: start from its reset "
        "value or give the whole value");
    EXPECT_EQ(wire.access.changed(wire.catalog.item("Key"), lock, RegisterAccess::Base::Reset), 1U);
}

TEST(RegisterAccess, DumpsWhatAReadDoesNotClear) {
    Wire wire;
    std::string dumped;
    for (const auto& [name, value] : wire.access.dump().values)
        dumped += fmt::format("{}={:X} ", name, value);
    EXPECT_EQ(dumped, "Mode=22 Speed=10 Faults=7 Code=99 Code state=2 ");
    EXPECT_EQ(wire.takeWords(), "0100 0200 0300 0600 4600 ");
    EXPECT_EQ(wire.access.dump(true).values.size(), 6U);
}

TEST(RegisterAccess, LoadsWhatDiffersAndReportsWritesWithoutEffect) {
    Wire wire;
    wire.stuck = 0x02;
    const RegisterSnapshot wanted{.chip = "pump",
                                  .values = {{"Mode", 0x43},
                                             {"Speed", 0x10}, // as it is
                                             {"Log", 0x0},
                                             {"Key", 0x1},    // cannot be read
                                             {"Code", 0x1}}}; // volatile
    const RegisterAccess::Loaded loaded = wire.access.load(wanted, true);
    EXPECT_EQ(wire.takeWords(), "0100 8143 0100 0200 8501 ");
    ASSERT_EQ(loaded.written.size(), 2U);
    ASSERT_EQ(loaded.mismatches.size(), 1U);
    EXPECT_EQ(loaded.mismatches[0].item->name, "Mode");
    EXPECT_EQ(loaded.mismatches[0].read, 0x41U);
    wire.access.load(wanted, false);
    EXPECT_EQ(wire.takeWords(), "0100 8143 0200 8501 ");
    EXPECT_EQ(
        failureOf([&] { static_cast<void>(wire.access.verified(wire.catalog.item("Code"), 0)); }),
        "Code was written, and a read-back shows something else");
}

} // namespace
} // namespace bitlux::test
