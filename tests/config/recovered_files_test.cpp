// Unsaved work in its folder: what remains of it when programs end, are killed, or run at once.

#include "config/recovered_files.h"
#include "platform/failure.h"
#include "support/temporary_folder.h"
#include "support/test_bench.h"

#include <chrono>
#include <functional>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bitlux::test {
namespace {

/// A program with its work in a folder does this and is killed.
void killedAfter(const std::string& folder, const std::function<void(RecoveredFiles&)>& action) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        RecoveredFiles files(folder);
        action(files);
        ::_exit(0); // nothing is unwound
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
}

std::size_t filesIn(const std::string& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder))
        ++count;
    return count;
}

TEST(RecoveredFiles, AreFoundByTheNextProgramAfterOneWasKilled) {
    const TemporaryFolder user;
    const std::string folder = user.path("state/bitlux-forge");
    const std::string origin = "/home/\u0436/100% \"a\"\t\u00FC.spi";
    killedAfter(folder, [&](RecoveredFiles& files) {
        files.keepDraft("first\r\n", origin);
        files.keepDraft("second\r\n", origin);
    });
    const RecoveredFiles next(folder);
    ASSERT_TRUE(next.left());
    EXPECT_EQ(next.left()->origin, origin);
    EXPECT_EQ(contentOf(next.left()->fileName),
              "second\r\n\"[RecoveredFrom]\","
              "\"/home/%D0%B6/100%25%20%22a%22%09%C3%BC.spi\"\r\n");
    ASSERT_EQ(next.list().size(), 1U);
    EXPECT_EQ(next.list()[0].fileName, next.left()->fileName);
    EXPECT_FALSE(RecoveredFiles(folder).left()) << "it is reported once";
    EXPECT_EQ(filesIn(folder), 2U) << "the marker of the one that runs, and the work";
    killedAfter(folder, [](RecoveredFiles&) {}); // with nothing unsaved
    EXPECT_FALSE(RecoveredFiles(folder).left());
}

TEST(RecoveredFiles, OfProgramsThatRunAtOnceStayApart) {
    const TemporaryFolder user;
    RecoveredFiles one(user.path());
    one.keepDraft("one\r\n", "");
    {
        RecoveredFiles other(user.path());
        EXPECT_FALSE(other.left());
        other.keepDraft("other\r\n", "/x/other.spi");
        other.giveUpDraft();
        other.keepDraft("later\r\n", "");
        other.dropDraft();
        EXPECT_FALSE(other.hasDraft());
        other.giveUpDraft(); // nothing
    }
    EXPECT_TRUE(one.hasDraft());
    ASSERT_EQ(one.list().size(), 1U);
    const std::string file = one.list()[0].fileName;
    EXPECT_EQ(contentOf(file), "other\r\n\"[RecoveredFrom]\",\"/x/other.spi\"\r\n");
    // What is taken up again is a draft, which no other program offers.
    EXPECT_TRUE(one.adopt(file));
    EXPECT_FALSE(RecoveredFiles(user.path()).adopt(file));
    EXPECT_TRUE(one.list().empty());
    one.giveUpDraft();
    EXPECT_EQ(one.list().at(0).origin, "/x/other.spi");
}

TEST(RecoveredFiles, AreTheLastTen) {
    const TemporaryFolder user;
    user.write("recovered-strange.spi", "no record");
    std::filesystem::last_write_time(user.path("recovered-strange.spi"),
                                     std::filesystem::file_time_type::clock::now() -
                                         std::chrono::hours(24));
    RecoveredFiles files(user.path());
    for (int i = 1; i <= 12; ++i) {
        files.keepDraft("x\r\n", fmt::format("/{}.spi", i));
        files.giveUpDraft();
    }
    const std::vector<RecoveredFile> list = files.list();
    ASSERT_EQ(list.size(), 10U);
    EXPECT_EQ(list.front().origin, "/12.spi");
    EXPECT_EQ(list.back().origin, "/3.spi");
    EXPECT_EQ(filesIn(user.path()), 11U);
    EXPECT_THROW(RecoveredFiles(""), Failure);
    EXPECT_THROW(RecoveredFiles("/dev/null/x"), Failure);
}

} // namespace
} // namespace bitlux::test
