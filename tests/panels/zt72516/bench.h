#pragma once

#include "panels/common/panel_form.h"
#include "panels/zt72516/watchdog.h"
#include "support/test_bench.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test::zt72516 {

using Texts = std::vector<std::string>;
using Lines = std::vector<std::pair<std::string, std::string>>;

constexpr std::int64_t millisecond = 1'000'000;

/// The program with a dongle, words of 24 bits in type 3 applied, and the ZT72516 panel open.
class Bench : public TestBench {
public:
    explicit Bench(const std::string& device = "scripted", const Texts& replies = {"00000000"})
        : TestBench(device, replies, WithDongle::Yes) {
        get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength").setText("24");
        get<forms::OptionButton>("frmConfigureSPI.optHex").setValue(true);
        get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").setSelected(3);
        program.dialog().cmdApply_Click();
        loop.drive(program.forms());
        program.forms().show("ZT72516");
        boxes.takeTexts();
        program.startRecording(trace);
    }

    ~Bench() { program.stopRecording(); }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    PanelForm& panel() { return program.panels().touch("zt72516"); }
    SequenceLists& lists() { return panel().sequence.lists; }

    static std::string full(const std::string& control) {
        return control.find('.') == std::string::npos ? "ZT72516." + control : control;
    }
    template <typename T>
    T& on(const std::string& control) {
        return get<T>(full(control));
    }
    void press(const std::string& button) { on<forms::Button>(button).click(); }
    std::string caption(const std::string& label) { return on<forms::Label>(label).caption(); }
    forms::Value call(const std::string& procedure) { return panel().call(procedure); }

    /// The labels of a row that are lit.
    std::uint64_t row(const std::string& name) {
        std::uint64_t value = 0;
        const std::string wanted = full(name);
        for (const forms::Control* control :
             program.forms().form(wanted.substr(0, wanted.find('.'))).controls())
            if (control->name() == wanted.substr(wanted.find('.') + 1) &&
                control->backColor() == 0xFFFFC0)
                value |= std::uint64_t{1} << control->index().value();
        return value;
    }
    /// Clicks the bits of a row until it shows a value.
    void pokeTo(const std::string& name, std::uint64_t wanted) {
        const std::uint64_t differs = row(name) ^ wanted;
        for (int bit = 0; bit < 32; ++bit)
            if ((differs >> bit & 1) != 0)
                on<forms::Label>(fmt::format("{}({})", name, bit)).click();
    }
    /// What went out since the last call: words as "43580090" with ":24" behind them when they have
    /// other than 32 bits, commands as "<00 16 00 08 00 00 00 00>".
    std::string sent() {
        Texts all;
        for (const WireAccess& access : trace.accesses()) {
            if (access.kind != WireAccess::Kind::FrameOut)
                continue;
            const UsbFrame& frame = access.frame;
            const int bits = frame[0] & 0x3F;
            if (bits == 0)
                all.push_back(fmt::format("<{:02X}>", fmt::join(frame, " ")));
            else
                all.push_back(fmt::format("{:02X}{:02X}{:02X}{:02X}{}", frame[3], frame[4],
                                          frame[5], frame[6],
                                          bits == 32 ? "" : fmt::format(":{}", bits)));
        }
        trace.clear();
        return fmt::format("{}", fmt::join(all, " "));
    }
    /// What a button sends, and the lines that it appends as "+Init Reg Write=43580090".
    std::string effectsOf(const std::string& button) {
        trace.clear();
        const int before = lists().last();
        press(button);
        std::string all = sent();
        for (int line = before + 1; line <= lists().last(); ++line)
            all += fmt::format("{}+{}={}", all.empty() ? "" : " ", lists().command(line),
                               lists().value(line));
        return all;
    }

    void fill(const Lines& lines) {
        lists().clear();
        for (const auto& [command, value] : lines)
            lists().append(command, value);
    }
    /// Plays lines; what went out.
    std::string run(const Lines& lines) {
        fill(lines);
        trace.clear();
        press("Cm_Run_Seq");
        return sent();
    }
    /// All rows of a list.
    std::string column(const std::string& list) {
        return fmt::format("{}", fmt::join(lines("ZT72516." + list), "|"));
    }
    /// Length and type of words, whether the panel is active, and the type's tab in the dialog.
    std::string shape() {
        return fmt::format("{}/{} {} {}", session().SPIWordLength, session().SPIType,
                           session().ZT72516PanelActive,
                           get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").selected());
    }

    WireTrace trace;
};

} // namespace bitlux::test::zt72516
