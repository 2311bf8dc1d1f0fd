#include "platform/linux/system_tool.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bitlux::test {
namespace {

void makeProgram(const TemporaryFolder& folder, const std::string& name, const std::string& text) {
    ASSERT_EQ(chmod(folder.write(name, text).c_str(), 0755), 0);
}

TEST(SystemTool, IsTheFirstThatSuitsTheDesktop) {
    const TemporaryFolder folder;
    const std::string places = "/nowhere::" + folder.path();
    const EnvironmentVariable path("PATH", places.c_str());
    const EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "XFCE");
    EXPECT_FALSE(LinuxSystemTool().available());
    makeProgram(folder, "gnome-control-center", "");
    folder.write("hardinfo", "not executable");
    EXPECT_FALSE(LinuxSystemTool().available());
    makeProgram(folder, "xfce4-about", "");
    EXPECT_EQ(LinuxSystemTool::command(), std::vector{folder.path("xfce4-about")});
    const EnvironmentVariable other("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    EXPECT_EQ(LinuxSystemTool::command(),
              (std::vector<std::string>{folder.path("gnome-control-center"), "info-overview"}));
}

TEST(SystemTool, RunsDetached) {
    const TemporaryFolder folder;
    const std::string fifo = folder.path("said");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    int leaked[2];
    ASSERT_EQ(pipe(leaked), 0);
    startDetached({"/bin/sh", "-c",
                   "{ [ -e /proc/self/fd/" + std::to_string(leaked[0]) +
                       " ] && echo inherited; [ $PPID = " + std::to_string(getpid()) +
                       " ] && echo child; echo ran; } > " + fifo});
    std::ifstream said(fifo); // waits for the writer
    std::string line;
    std::getline(said, line);
    EXPECT_EQ(line, "ran");
    errno = 0;
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    close(leaked[0]);
    close(leaked[1]);
}

} // namespace
} // namespace bitlux::test
