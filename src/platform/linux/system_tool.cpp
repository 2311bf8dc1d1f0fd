#include "platform/linux/system_tool.h"

#include "platform/failure.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <utility>

#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bitlux {

namespace {

struct Tool {
    const char* name;
    const char* argument = "";
    const char* desktop = ""; ///< the only one that it runs on
};

constexpr std::array<Tool, 8> tools{{{"hardinfo2"},
                                     {"hardinfo"},
                                     {"kinfocenter"},
                                     {"cinnamon-settings", "info"},
                                     {"mate-system-monitor", "--show-system-tab"},
                                     {"gnome-control-center", "info-overview", "GNOME"},
                                     {"xfce4-about"},
                                     {"lshw-gtk"}}};

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string inSearchPath(const std::string& program) {
    std::istringstream folders(environment("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string file = folder;
        file.append("/").append(program);
        if (!folder.empty() && access(file.c_str(), X_OK) == 0)
            return file;
    }
    return {};
}

} // namespace

std::vector<std::string> LinuxSystemTool::command() {
    const std::string desktop = environment("XDG_CURRENT_DESKTOP");
    for (const Tool& tool : tools) {
        if (desktop.find(tool.desktop) == std::string::npos)
            continue;
        if (const std::string file = inSearchPath(tool.name); !file.empty())
            return *tool.argument == 0 ? std::vector{file}
                                       : std::vector{file, std::string(tool.argument)};
    }
    return {};
}

void LinuxSystemTool::start() {
    std::vector<std::string> found = command();
    if (found.empty())
        throw Failure(Failure::Kind::File, "The system information tool is gone");
    startDetached(std::move(found));
}

void startDetached(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child < 0)
        throw Failure(Failure::Kind::File, "Cannot start " + command.front());
    if (child == 0) { // only what a signal handler may do from here on
        setsid();
        if (fork() == 0) { // whose parent is gone at once, so that the system waits for its end
            close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
            execv(arguments.front(), arguments.data());
        }
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

} // namespace bitlux
