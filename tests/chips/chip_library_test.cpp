#include "chips/chip_library.h"
#include "platform/failure.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using chips::ChipLibrary;
using chips::ChipPtr;
using Outcome = ChipLibrary::Kept::Outcome;

std::string chipText(const std::string& head) {
    return fmt::format("[chip]\n{}\n[word]\nbits = 16\ndata = \"7:0\"\nwrite = 0x8000\n"
                       "[[register]]\ntitle = \"A\"\naddress = 0\nwidth = 8\n",
                       head);
}

std::string failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return {};
}

/// Folders of a user and of a machine, and one that is not there.
struct Folders {
    TemporaryFolder own;
    TemporaryFolder machine;
    ChipLibrary library{{own.path("bitlux-forge/chips"), "", machine.path("none"), machine.path()}};

    std::string inOwn(const std::string& name, const std::string& text) const {
        return own.write("bitlux-forge/chips/" + name, text);
    }
};

TEST(ChipLibrary, FindsTheChipsOfAllFolders) {
    Folders folders;
    const std::string meter = folders.inOwn("meter.toml", chipText("title = \"Meter\""));
    folders.machine.write("meter.toml", chipText("title = \"Hidden\""));
    const std::string pump = folders.machine.write("pump.toml", "not read for its name");
    folders.inOwn("zt72518.toml", chipText("title = \"Taken\""));
    folders.inOwn("my chip.toml", chipText("title = \"Blank\""));
    folders.inOwn(".hidden.toml", "");
    folders.inOwn("notes.txt", "");
    folders.inOwn("folder.toml/x.toml", "");
    std::string all;
    for (const ChipLibrary::Entry& entry : folders.library.entries())
        all += fmt::format("{} {}\n", entry.name, entry.file);
    EXPECT_EQ(all, fmt::format("meter {}\npump {}\nzt72361 \nzt72516 \nzt72518 \nzt72537 \n", meter,
                               pump));
    EXPECT_EQ(
        folders.library.leftOut(),
        (std::vector{fmt::format("{}/bitlux-forge/chips/my chip.toml is left out: the name of "
                                 "a chip has letters, digits, - and _ alone.",
                                 folders.own.path()),
                     fmt::format("{}/bitlux-forge/chips/zt72518.toml is left out: the program "
                                 "has a chip of this name of its own.",
                                 folders.own.path())}));
    EXPECT_TRUE(folders.library.isUsers("meter"));
    EXPECT_FALSE(folders.library.isUsers("zt72518"));
    EXPECT_EQ(folders.library.chip("meter")->title, "Meter");
    EXPECT_EQ(folders.library.chip("zt72518"), chips::embeddedChip("zt72518"));
    // a damaged one, and one that is none, hinder no other
    EXPECT_EQ(failureOf([&] { folders.library.chip("pump"); }).find(pump + ":1:"), 0U);
    EXPECT_EQ(failureOf([&] { folders.library.chip("metre"); }),
              "There is no chip \"metre\". Did you mean meter?");
    EXPECT_EQ(failureOf([&] { folders.library.chip("../pump"); }).find("There is no chip"), 0U);
}

TEST(ChipLibrary, ReadsAFileAtFirstUseAndWhenItChanged) {
    Folders folders;
    folders.inOwn("meter.toml", chipText("title = \"One\""));
    const ChipPtr one = folders.library.chip("meter");
    EXPECT_EQ(folders.library.refreshed("meter"), one);
    const std::string file = folders.inOwn("meter.toml", chipText("title = \"Another\""));
    EXPECT_EQ(folders.library.chip("meter"), one);
    const ChipPtr other = folders.library.refreshed("meter");
    EXPECT_EQ(other->title, "Another");
    EXPECT_EQ(one->title, "One");
    folders.inOwn("meter.toml", chipText("title = \"Damaged"));
    EXPECT_EQ(failureOf([&] { folders.library.refreshed("meter"); }).find(file + ":2:"), 0U);
    EXPECT_EQ(folders.library.chip("meter"), other);
    std::filesystem::remove(file);
    EXPECT_EQ(failureOf([&] { folders.library.refreshed("meter"); }), "There is no chip \"meter\"");
    // what only the program may have
    folders.inOwn("meter.toml", chipText("title = \"T\"\nname = \"other\"\nmodel = [\"x\"]") +
                                    "[panel]\nform = \"frmMain\"\nparts = [\"x\"]\n");
    EXPECT_EQ(failureOf([&] { folders.library.refreshed("meter"); }),
              fmt::format("{0}:13:1: only chips of the program name their `form`. Remove it.\n"
                          "{0}:13:1: only chips of the program have `parts`, `companions`, "
                          "`active`, `last_word`, `texts` and `copies`. Remove them.\n"
                          "{0}:1:1: only chips of the program have a `model`. Remove it.\n"
                          "{0}:1:1: the chip is named \"other\", its file \"meter\". Call the file "
                          "other.toml, or leave `name` out.",
                          file));
}

TEST(ChipLibrary, KeepsAFileFromAnywhere) {
    Folders folders;
    const TemporaryFolder elsewhere;
    const std::string text = chipText("title = \"Meter\"\nname = \"meter\"");
    const std::string given = elsewhere.write("Download (1).toml", text);
    const std::string home = folders.own.path("bitlux-forge/chips/meter.toml");
    const auto keep = [&folders](const std::string& file, bool replaces = false) {
        return folders.library.keep(file, replaces);
    };
    ChipLibrary::Kept kept = keep(given);
    EXPECT_EQ(kept.outcome, Outcome::Done);
    EXPECT_EQ(kept.name, "meter");
    EXPECT_EQ(kept.file, home);
    EXPECT_EQ(contentOf(home), text);
    EXPECT_EQ(folders.library.chip("meter")->title, "Meter");
    EXPECT_EQ(keep(given).outcome, Outcome::There);
    EXPECT_EQ(keep(home).outcome, Outcome::There);

    const std::string newer = chipText("title = \"Newer\"\nname = \"meter\"");
    elsewhere.write("newer.toml", newer);
    EXPECT_EQ(keep(elsewhere.path("newer.toml")).outcome, Outcome::Exists);
    EXPECT_EQ(contentOf(home), text);
    EXPECT_EQ(keep(elsewhere.path("newer.toml"), true).outcome, Outcome::Done);
    EXPECT_EQ(contentOf(home), newer);
    EXPECT_EQ(folders.library.refreshed("meter")->title, "Newer");

    elsewhere.write("zt72518.toml", chipText("title = \"Taken\""));
    elsewhere.write("my chip.toml", chipText("title = \"Blank\""));
    for (const auto& [file, problem] :
         {std::pair("none.toml", ": there is no such file"),
          std::pair("zt72518.toml", ":1:1: the program has a chip \"zt72518\" of its own"),
          std::pair("my chip.toml", ":1:1: \"my chip\" is no name for a chip")}) {
        kept = keep(elsewhere.path(file));
        EXPECT_EQ(kept.outcome, Outcome::Refused);
        EXPECT_EQ(chips::describe(kept.problems, "").find(problem), 0U)
            << chips::describe(kept.problems, "");
    }
    EXPECT_EQ(folders.library.names(),
              (std::vector<std::string>{"meter", "zt72361", "zt72516", "zt72518", "zt72537"}));
}

TEST(ChipLibrary, LooksIntoTheFoldersOfTheEnvironment) {
    const TemporaryFolder folder;
    folder.write("home/.local/share/bitlux-forge/chips/one.toml", "");
    folder.write("data/bitlux-forge/chips/two.toml", "");
    folder.write("usr/bitlux-forge/chips/three.toml", "");
    const EnvironmentVariable home("HOME", folder.path("home").c_str());
    const EnvironmentVariable dirs("XDG_DATA_DIRS",
                                   (":relative:" + folder.path("usr") + ":").c_str());
    const auto isUsers = [](const char* name) { return ChipLibrary().isUsers(name); };
    {
        const EnvironmentVariable data("XDG_DATA_HOME", "not-from-the-root");
        EXPECT_TRUE(isUsers("one"));
        EXPECT_TRUE(isUsers("three"));
        EXPECT_FALSE(isUsers("two"));
    }
    const EnvironmentVariable data("XDG_DATA_HOME", folder.path("data").c_str());
    EXPECT_FALSE(isUsers("one"));
    EXPECT_TRUE(isUsers("two"));
}

} // namespace
} // namespace bitlux::test
