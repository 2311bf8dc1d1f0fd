#pragma once

#include "bench/chosen_marker_files.h"
#include "panels/zt72518/panel_form.h"
#include "support/test_bench.h"

#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {

/// The program with a dongle and the ZT72518 panel open; lines for sequence and store are caught.
class PanelBench : public TestBench {
public:
    explicit PanelBench(const std::string& device = "loopback",
                        const std::vector<std::string>& replies = {})
        : TestBench(device, replies, WithDongle::Yes) {
        program.forms().show("ZT72518");
        catchLines();
    }

    zt72518::PanelForm& panel() { return program.zt72518(); }

    template <typename T>
    T& on(const std::string& control) {
        return get<T>("ZT72518." + control);
    }
    void press(const std::string& button) { on<forms::Button>(button).click(); }
    void choose(const std::string& option) { on<forms::OptionButton>(option).click(); }
    void tick(const std::string& box) { on<forms::CheckBox>(box).click(); }
    void poke(const std::string& label) { on<forms::Label>(label).click(); }
    std::string caption(const std::string& label) { return on<forms::Label>(label).caption(); }
    int byte(const std::string& row) { return panel().pageControls.row(row).byte(); }
    /// Labels of an array whose back colour is `colour`.
    std::vector<int> lit(const std::string& labels, forms::Color colour) {
        std::vector<int> result;
        for (const forms::Control* control : panel().controls())
            if (control->name() == labels && control->backColor() == colour)
                result.push_back(control->index().value());
        return result;
    }

    /// What `action` sends, appends and stores, as "4AA5", "+MUX Write=A5" and "*MUX Write=A5".
    template <typename Action>
    std::string effects(Action action) {
        effects_.clear();
        WireTrace trace;
        program.startRecording(trace);
        action();
        program.stopRecording();
        std::vector<std::string> words;
        for (const WireAccess& access : trace.accesses())
            if (access.kind == WireAccess::Kind::FrameOut)
                words.push_back(fmt::format("{:02X}{:02X}", access.frame[3], access.frame[4]));
        words.insert(words.end(), effects_.begin(), effects_.end());
        return fmt::format("{}", fmt::join(words, " "));
    }
    std::string effectsOf(const std::string& button) {
        return effects([&] { press(button); });
    }

private:
    void catchLines() {
        panel().sinks.append = [this](const std::string& name, const std::string& value) {
            effects_.push_back(fmt::format("+{}={}", name, value));
        };
        panel().sinks.store = [this](const std::string& name, const std::string& value) {
            effects_.push_back(fmt::format("*{}={}", name, value));
        };
    }

    std::vector<std::string> effects_;
};

} // namespace bitlux::test
