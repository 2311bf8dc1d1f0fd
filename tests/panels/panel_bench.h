#pragma once

#include "bench/chosen_marker_files.h"
#include "panels/common/auto_reads.h"
#include "panels/common/command_store.h"
#include "panels/common/panel_form.h"
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
#include <gtest/gtest.h>

namespace bitlux::test {

constexpr std::int64_t millisecond = 1'000'000;

/// The program with a dongle and the ZT72518 panel open; lines for the store are caught.
class PanelBench : public TestBench {
public:
    explicit PanelBench(const std::string& device = "loopback",
                        const std::vector<std::string>& replies = {})
        : TestBench(device, replies, WithDongle::Yes) {
        program.forms().show("ZT72518");
        catchStore();
    }

    PanelForm& panel() { return program.panels().touch("zt72518"); }

    template <typename T>
    T& on(const std::string& control) {
        return get<T>("ZT72518." + control);
    }
    void press(const std::string& button) { on<forms::Button>(button).click(); }
    void choose(const std::string& option) { on<forms::OptionButton>(option).click(); }
    void tick(const std::string& box) { on<forms::CheckBox>(box).click(); }
    void poke(const std::string& label) { on<forms::Label>(label).click(); }
    /// Clicks the bits of a row until it shows a byte.
    void pokeTo(const std::string& row, int wanted) {
        for (int bit = 0; bit < 8; ++bit)
            if (((byte(row) ^ wanted) >> bit & 1) != 0)
                poke(fmt::format("{}({})", row, bit));
    }
    std::string caption(const std::string& label) { return on<forms::Label>(label).caption(); }
    /// Turns a switch of the chip, by the name that `bitlux send --turn-on` knows.
    void turn(const std::string& name, bool on = true) {
        dongle.catchUp();
        dongle.chip()->turn(switchNamed(*dongle.chip(), name), on);
    }
    int byte(const std::string& row) { return panel().pageControls.row(row).byte(); }
    /// The status row, as "B7CF".
    std::string status() {
        unsigned bits = 0;
        for (const int bit : lit("Reg_W", 0xFFFFC0))
            bits |= 1U << bit;
        return fmt::format("{:04X}", bits);
    }
    /// What the chip tells of its state.
    std::string reading(const std::string& name) {
        dongle.catchUp();
        for (const Reading& one : dongle.chip()->readings())
            if (one.name == name)
                return one.value;
        return "no such reading";
    }
    /// Labels of an array whose back colour is `colour`.
    std::vector<int> lit(const std::string& labels, forms::Color colour) {
        std::vector<int> result;
        for (const forms::Control* control : panel().controls())
            if (control->name() == labels && control->backColor() == colour)
                result.push_back(control->index().value());
        return result;
    }

    /// What `action` sends, appends and stores, as "4AA5", "<00 15 00 20 00 00 00 00>" for a
    /// command to the dongle, "+MUX Write=A5" and "*MUX Write=A5".
    template <typename Action>
    std::string effects(Action action) {
        stored_.clear();
        const SequenceLists& lists = panel().sequence.lists;
        const int before = lists.last();
        WireTrace trace;
        program.startRecording(trace);
        action();
        program.stopRecording();
        std::vector<std::string> all;
        for (const WireAccess& access : trace.accesses()) {
            if (access.kind != WireAccess::Kind::FrameOut)
                continue;
            const UsbFrame& frame = access.frame;
            all.push_back(frame[0] == 0 ? fmt::format("<{:02X}>", fmt::join(frame, " "))
                                        : fmt::format("{:02X}{:02X}", frame[3], frame[4]));
        }
        for (int row = before + 1; row <= lists.last(); ++row)
            all.push_back(fmt::format("+{}={}", lists.command(row), lists.value(row)));
        all.insert(all.end(), stored_.begin(), stored_.end());
        return fmt::format("{}", fmt::join(all, " "));
    }
    std::string effectsOf(const std::string& button) {
        return effects([&] { press(button); });
    }

private:
    void catchStore() {
        panel().part<CommandStore>().write = [this](const std::string& name,
                                                    const std::string& value) {
            stored_.push_back(fmt::format("*{}={}", name, value));
        };
    }

    std::vector<std::string> stored_;
};

} // namespace bitlux::test
