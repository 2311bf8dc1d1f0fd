#include "platform/text_file.h"

#include "platform/failure.h"
#include "support/file_size_limit.h"
#include "support/test_bench.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

namespace fs = std::filesystem;
using fs::perms;

void writeLines(const std::string& name, const std::vector<std::string>& lines) {
    replaceTextFile(name, [&lines](const auto& writeLine) {
        for (const std::string& line : lines)
            writeLine(line);
    });
}

/// The text of the failure to write, empty when it succeeded.
std::string failureToWrite(const std::string& name, const std::vector<std::string>& lines = {}) {
    try {
        writeLines(name, lines);
        return {};
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.kind(), Failure::Kind::File);
        return failure.what();
    }
}

/// What `action` answers in a process of its own, which may give up rights and resources.
std::string inChild(const std::function<std::string()>& action) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        std::string answer;
        try {
            answer = action();
        } catch (const std::exception& error) { // it must not reach the tests of this process
            answer = error.what();
        }
        const bool isSent = ::write(ends[1], answer.data(), answer.size()) >= 0;
        ::_exit(isSent ? 0 : 1);
    }
    ::close(ends[1]);
    std::array<char, 1024> answer{};
    const ssize_t size = ::read(ends[0], answer.data(), answer.size());
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    return {answer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

/// A folder with one old file, and nothing else afterwards.
class TextFile : public testing::Test {
protected:
    TextFile() { std::ofstream(file) << "old\n"; }

    /// Names and contents of all that is in the folder.
    [[nodiscard]] std::vector<std::string> all() const {
        std::vector<std::string> result;
        for (const auto& entry : fs::directory_iterator(folder.path()))
            result.push_back(entry.path().filename().string() + "=" + contentOf(entry.path()));
        std::sort(result.begin(), result.end());
        return result;
    }

    [[nodiscard]] std::string failureOnAFullDisk() const {
        const FileSizeLimit limit(10'000);
        return failureToWrite(file, {std::string(20'000, 'x')});
    }

    TemporaryFolder folder;
    std::string file = folder.path("a.txt");
    const std::string tooLarge = "The file \"" + file + "\" cannot be written: File too large.";
    const std::vector<std::string> untouched{"a.txt=old\n"};
};

TEST_F(TextFile, EndsEachLineInCarriageReturnAndLineFeed) {
    writeLines(file, {"first", "", "third; \xE4"});
    EXPECT_EQ(contentOf(file), "first\r\n\r\nthird; \xE4\r\n");
    writeLines(file, {});
    EXPECT_EQ(contentOf(file), "");
    const std::string large(100'000, 'x'); // more than is collected before it is written
    writeLines(file, {large, large, "end"});
    EXPECT_EQ(contentOf(file), large + "\r\n" + large + "\r\nend\r\n");
    EXPECT_EQ(all().size(), 1U);
}

TEST_F(TextFile, StaysWholeWhenTheWriterFails) {
    EXPECT_THROW(replaceTextFile(file,
                                 [](const auto& writeLine) {
                                     writeLine(std::string(100'000, 'x'));
                                     throw std::out_of_range("midway");
                                 }),
                 std::out_of_range);
    EXPECT_EQ(all(), untouched);
}

TEST_F(TextFile, StaysWholeWhenTheDiskIsFull) {
    EXPECT_EQ(failureOnAFullDisk(), tooLarge);
    EXPECT_EQ(all(), untouched);
}

TEST_F(TextFile, ReportsWhyItCannotBeWritten) {
    const std::pair<std::string, const char*> cases[] = {
        {folder.path("missing/a.txt"), "No such file or directory."},
        {folder.path("a.txt/b.txt"), "Not a directory."},
        {folder.path(), "Is a directory."},
        {"/dev/full", "it is a device."},
        {"", "No such file or directory."},
        {folder.path(std::string(300, 'x')), "File name too long."}};
    for (const auto& [name, reason] : cases)
        EXPECT_EQ(failureToWrite(name), "The file \"" + name + "\" cannot be written: " + reason);
    EXPECT_EQ(all(), untouched);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

/// As a user who owns nothing here.
std::string asOrdinaryUser(const std::function<std::string()>& action) {
    return inChild([&action] {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && ::setuid(nobody) != 0)
            return std::string("still root");
        return action();
    });
}

TEST_F(TextFile, NeedsThePermissionOfTheFolder) {
    fs::permissions(folder.path(), perms::owner_all | perms::group_all | perms::others_all);
    fs::permissions(file, perms::owner_read | perms::others_read);
    for (const std::string& name : {file, folder.path("new.txt")}) {
        if (name != file) // a file that may be written, in a folder that takes none
            fs::permissions(folder.path(), perms::owner_read | perms::owner_exec |
                                               perms::others_read | perms::others_exec);
        EXPECT_EQ(asOrdinaryUser([&name] { return failureToWrite(name, {"new"}); }),
                  "The file \"" + name + "\" cannot be written: Permission denied.");
    }
    EXPECT_EQ(all(), untouched);
}

TEST_F(TextFile, IsWrittenInPlaceWhereTheFolderTakesNoOther) {
    fs::permissions(folder.path(), perms{0555});
    fs::permissions(file, perms{0666});
    const auto overwrite = [this](const std::string& content) {
        return asOrdinaryUser([this, &content] { return failureToWrite(file, {content}); });
    };
    EXPECT_EQ(overwrite("longer than before"), "");
    EXPECT_EQ(all(), std::vector<std::string>{"a.txt=longer than before\r\n"});
    EXPECT_EQ(overwrite("old"), "");
    const std::vector<std::string> old{"a.txt=old\r\n"};
    EXPECT_EQ(all(), old);
    EXPECT_EQ(asOrdinaryUser([this] { return failureOnAFullDisk(); }), tooLarge);
    EXPECT_EQ(all(), old);
}

TEST_F(TextFile, TakesNoHalfOfALine) {
    const FileSizeLimit limit(10);
    appendLine(file, "more");
    EXPECT_EQ(failureOf([this] { appendLine(file, "and more"); }), tooLarge); // on the full disk
    EXPECT_EQ(all(), std::vector<std::string>{"a.txt=old\nmore\r\n"});
}

TEST_F(TextFile, KeepsPermissionsAndLinks) {
    const perms readable = perms::owner_read | perms::owner_write | perms::group_read;
    fs::permissions(file, readable);
    fs::create_symlink("a.txt", folder.path("link.txt"));
    writeLines(folder.path("link.txt"), {"new"});
    EXPECT_EQ(contentOf(file), "new\r\n");
    EXPECT_EQ(fs::status(file).permissions(), readable);
    EXPECT_TRUE(fs::is_symlink(folder.path("link.txt")));

    fs::create_symlink("b.txt", folder.path("ahead.txt")); // its file is not there yet
    const mode_t mask = ::umask(027);
    writeLines(folder.path("ahead.txt"), {"ahead"});
    ::umask(mask);
    EXPECT_TRUE(fs::is_symlink(folder.path("ahead.txt")));
    EXPECT_EQ(contentOf(folder.path("b.txt")), "ahead\r\n");
    EXPECT_EQ(fs::status(folder.path("b.txt")).permissions(), readable);
}

} // namespace
} // namespace bitlux::test
