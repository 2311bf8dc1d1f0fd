#pragma once

#include "panels/common/auto_reads.h"
#include "panels/common/command_store.h"
#include "panels/common/panel_form.h"
#include "panels/common/sequence_stops.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/line_commands.h"
#include "panels/zt72518/watchdog.h"
#include "support/test_bench.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::test {

using Texts = std::vector<std::string>;
using Lines = std::vector<std::pair<std::string, std::string>>;

constexpr std::int64_t millisecond = 1'000'000;

/// The panel beside a dongle with a chip that answers as a script tells, in the shape of words that
/// the panel sets, with the wire trace on.
struct SequencerBench : TestBench {
    explicit SequencerBench(const Texts& replies = {"0000"})
        : TestBench("scripted", replies, WithDongle::Yes) {
        loop.drive(program.forms());
        program.forms().show("ZT72518");
        program.startRecording(trace);
    }

    PanelForm& panel() { return program.panels().touch("zt72518"); }
    SequenceVariables& variables() { return panel().sequence.variables; }
    SequenceLists& lists() { return panel().sequence.lists; }

    void press(const std::string& button) { click("ZT72518." + button); }
    void toggle(const std::string& box) { get<forms::CheckBox>("ZT72518." + box).click(); }
    void type(const std::string& box, const std::string& text) {
        get<forms::TextBox>("ZT72518." + box).setText(text);
    }
    Texts column(const std::string& list) { return lines("ZT72518." + list); }
    /// All lines but the headers, as "MUX Write=A5".
    std::string sequence() {
        Texts result;
        for (int row = 1; row <= lists().last(); ++row)
            result.push_back(fmt::format("{}={}", lists().command(row), lists().value(row)));
        return fmt::format("{}", fmt::join(result, " "));
    }
    void fill(const Lines& lines) {
        lists().clear();
        for (const auto& [command, value] : lines)
            lists().append(command, value);
    }
    /// Plays lines; what went out.
    std::string run(const Lines& lines) {
        fill(lines);
        return run();
    }
    std::string run() {
        trace.clear();
        press("Cm_Run_Seq");
        return sent();
    }
    /// Words since the last call, as "4055", one that triggers with '!', and commands to the dongle
    /// as "<00 15 00 0B 09 00 00 00>".
    std::string sent() {
        Texts result;
        for (const WireAccess& access : trace.accesses()) {
            if (access.kind != WireAccess::Kind::FrameOut)
                continue;
            const UsbFrame& frame = access.frame;
            if ((frame[0] & 0x3F) == 0)
                result.push_back(fmt::format("<{:02X}>", fmt::join(frame, " ")));
            else
                result.push_back(fmt::format("{:02X}{:02X}{}", frame[3], frame[4],
                                             (frame[0] & 0x80) != 0 ? "!" : ""));
        }
        trace.clear();
        return fmt::format("{}", fmt::join(result, " "));
    }

    WireTrace trace;
};

} // namespace bitlux::test
