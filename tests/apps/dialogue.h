#pragma once

#include <array>
#include <csignal>
#include <cstdio>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux::test {

/// The real program: receives lines on its input, and returns lines of either output.
class Dialogue {
public:
    explicit Dialogue(const std::string& arguments) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        if (::pipe(input.data()) != 0 || ::pipe(output.data()) != 0)
            return;
        child_ = ::fork();
        if (child_ == 0) {
            ::dup2(input[0], STDIN_FILENO);
            ::dup2(output[1], STDOUT_FILENO);
            ::dup2(output[1], STDERR_FILENO);
            for (const int end : {input[0], input[1], output[0], output[1]})
                ::close(end);
            const std::string line = fmt::format("exec {} {}", BITLUX_PROGRAM, arguments);
            ::execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
            ::_exit(127);
        }
        ::close(input[0]);
        ::close(output[1]);
        input_ = input[1];
        output_ = ::fdopen(output[0], "r");
    }
    ~Dialogue() {
        end();
        std::fclose(output_);
    }
    Dialogue(const Dialogue&) = delete;
    Dialogue& operator=(const Dialogue&) = delete;

    bool say(const std::string& line) const {
        const std::string whole = line + "\n";
        return ::write(input_, whole.data(), whole.size()) == static_cast<ssize_t>(whole.size());
    }
    /// The next line of the program, empty at its end.
    std::string line() {
        std::array<char, 1024> text{};
        return std::fgets(text.data(), text.size(), output_) == nullptr ? "" : text.data();
    }
    void signal(int number) const { ::kill(child_, number); }
    /// Ends its input, takes the lines that are left, and waits for its exit code.
    int end() {
        if (input_ < 0)
            return code_;
        ::close(input_);
        input_ = -1;
        for (std::string next = line(); !next.empty(); next = line())
            rest_ += next;
        int status = 0;
        ::waitpid(child_, &status, 0);
        return code_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    /// The lines that were taken at the end.
    [[nodiscard]] const std::string& rest() const { return rest_; }

private:
    pid_t child_ = -1;
    int input_ = -1;
    std::FILE* output_ = nullptr;
    std::string rest_;
    int code_ = -1;
};

} // namespace bitlux::test
