#pragma once

#include "bench/chip.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {

inline std::string withoutBlanks(std::string text) {
    std::replace(text.begin(), text.end(), ' ', '_');
    return text;
}

/// A chip driven by steps, separated by blanks; names have underscores instead of blanks:
///   5A00          a word
///   DD80&FF=1B    a word and its answer, of which the bits of the mask count, or all
///   5240~1300&3F  a word with the bits of the mask, inverted, of the answer to another
///   !VDD_OV       turns a switch on, and !-VDD_OV turns it off
///   Mode>Normal   what the chip reports of its state
class ChipScript {
public:
    virtual ~ChipScript() = default;

    void play(const std::string& steps) {
        SCOPED_TRACE(steps);
        std::istringstream rest(steps);
        for (std::string step; rest >> step;) {
            SCOPED_TRACE(step);
            take(step);
        }
    }

    virtual std::uint64_t send(std::uint64_t word) = 0;
    /// The chip, at the present time.
    virtual Chip& present() = 0;
    /// What the chip reports of its state, without blanks.
    std::string reading(const std::string& name) {
        for (const Reading& one : present().readings())
            if (withoutBlanks(one.name) == name)
                return withoutBlanks(one.value);
        return "no such reading";
    }

protected:
    static std::uint64_t number(const std::string& step, std::size_t at = 0) {
        return std::stoull(step.substr(at), nullptr, 16);
    }
    virtual void take(const std::string& step) {
        if (const std::size_t state = step.find('>'); state != std::string::npos)
            EXPECT_EQ(reading(step.substr(0, state)), step.substr(state + 1));
        else if (step[0] == '!')
            turnSwitch(step.substr(step[1] == '-' ? 2 : 1), step[1] != '-');
        else
            exchangeWord(step);
    }

private:
    void exchangeWord(const std::string& step) {
        const std::size_t mark = step.find('&');
        const std::uint64_t mask = mark == std::string::npos ? ~0ULL : number(step, mark + 1);
        if (const std::size_t asked = step.find('~'); asked != std::string::npos) {
            send(number(step) | (~send(number(step, asked + 1)) & mask));
            return;
        }
        const std::uint64_t answer = send(number(step)) & mask;
        if (const std::size_t equals = step.find('='); equals != std::string::npos) {
            EXPECT_EQ(fmt::format("{:X}", answer), fmt::format("{:X}", number(step, equals + 1)));
        }
    }
    void turnSwitch(const std::string& name, bool on) {
        const auto& all = present().switches();
        const auto found = std::find_if(all.begin(), all.end(), [&](const ChipSwitch& one) {
            return withoutBlanks(one.name) == name ||
                   withoutBlanks(one.group + "/" + one.name) == name;
        });
        ASSERT_NE(found, all.end());
        present().turn(static_cast<std::size_t>(found - all.begin()), on);
    }
};

/// Plays each of them on a chip of its own.
template <typename Rig>
void playEach(std::initializer_list<const char*> scripts) {
    for (const char* steps : scripts)
        Rig().play(steps);
}

} // namespace bitlux::test
