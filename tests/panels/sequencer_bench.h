#pragma once

#include "panels/zt72518/panel_form.h"
#include "platform/conversions.h"
#include "support/test_bench.h"

#include <cstdint>
#include <map>
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
        session().SPIWordLength = 16;
        session().SPIType = 2;
        loop.drive(program.forms());
        program.startRecording(trace);
        slot->sequencer.run.decodeName = [this](const std::string& name) { decode(name); };
        slot->sequencer.run.binaryText = [](const std::string& digits) { return binary(digits); };
        slot->sequencer.run.computeParity = [this](std::uint8_t byte) { parityOf.push_back(byte); };
    }

    zt72518::PanelForm& panel() { return *slot; }
    zt72518::PanelVariables& variables() { return slot->variables(); }
    zt72518::SequenceLists& lists() { return slot->sequencer.lists; }

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
    std::vector<int> parityOf;

private:
    struct Decoded {
        std::uint8_t high;
        bool isWrite;
        int watchdog; ///< button, -1 for a word
    };

    void decode(const std::string& name) {
        static const std::map<std::string, Decoded> known{
            {"MUX Write", {64, true, -1}},     {"Init Misc Write", {80, true, -1}},
            {"CAN Read Low", {29, false, -1}}, {"Start Watchdog", {0, false, 0}},
            {"Stop Watchdog", {0, false, 2}},  {"One Simple Watchdog", {0, false, 12}}};
        const auto found = known.find(name);
        const Decoded decoded = found == known.end() ? Decoded{0, false, -1} : found->second;
        variables().SequenceHighByte = decoded.high;
        variables().SequenceIsWrite = decoded.isWrite;
        variables().SequenceIsWatchdog = decoded.watchdog >= 0;
        if (decoded.watchdog >= 0)
            slot->call("watchdog_Click", decoded.watchdog);
    }
    static std::string binary(const std::string& digits) {
        std::string result;
        for (const char digit : digits)
            result += fmt::format(" {:04b}", hexDigit(digit));
        return result;
    }

    forms::FormSlot<zt72518::PanelForm> slot{
        program.forms(), "ZT72518", [this] {
            return std::make_unique<zt72518::PanelForm>(
                program.forms(), zt72518::PanelForm::Parts{.session = program.session(),
                                                           .engine = program.engine(),
                                                           .dongle = program.dongle(),
                                                           .desk = deskParts,
                                                           .clock = clock});
        }};
    const Desk deskParts = desk.desk();
};

} // namespace bitlux::test
