#pragma once

#include <array>
#include <cstdio>
#include <string>

#include <sys/wait.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {

struct Outcome {
    int code;
    std::string output; ///< of both streams
};

/// Runs a shell command.
inline Outcome shell(const std::string& line) {
    FILE* pipe = ::popen(line.c_str(), "r");
    std::string output;
    std::array<char, 4096> block{};
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), pipe))
        output.append(block.data(), size);
    const int status = ::pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

/// Runs the real program with these arguments of a shell line.
inline Outcome bitlux(const std::string& arguments) {
    return shell(fmt::format("{} {} 2>&1", BITLUX_PROGRAM, arguments));
}

/// Runs the real program and expects this output and exit code.
inline void expectRun(const std::string& arguments, const std::string& output, int code = 0) {
    const Outcome outcome = bitlux(arguments);
    EXPECT_EQ(outcome.output, output) << arguments;
    EXPECT_EQ(outcome.code, code) << arguments;
}

} // namespace bitlux::test
