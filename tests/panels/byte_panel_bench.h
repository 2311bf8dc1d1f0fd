#pragma once

#include "panels/common/panel_form.h"
#include "platform/forms/timer.h"
#include "support/test_bench.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {

/// What a hand does on a panel, and what it leads to.
struct PanelStep {
    /// Controls that are clicked, "Name=5" for a bar, a list or a text; "Name*" is a tick of a
    /// timer, "!Group/Flag" turns a switch of the chip on, with underscores for blanks.
    const char* hands;
    /// Words as "6F", with "/1" behind them for the last byte of their frame, commands as
    /// "<00 04 00 00 03 28 02 00>", boxes as "[text]".
    const char* effects;
    /// Parted by semicolons: "Row(4)=8" is a row of four labels, "Label:text" a caption, "Name+"
    /// and "Name-" a control that is visible or hidden.
    const char* shows = "";
};

/// The program with a dongle and a panel whose words are bytes, with a model of the chip.
class BytePanelBench : public TestBench {
public:
    BytePanelBench(const std::string& device, const std::string& form)
        : TestBench(device, {}, WithDongle::Yes), form_(form) {
        program.forms().show(form_);
        boxes.takeTexts();
        program.startRecording(trace_);
    }
    ~BytePanelBench() { program.stopRecording(); }
    BytePanelBench(const BytePanelBench&) = delete;
    BytePanelBench& operator=(const BytePanelBench&) = delete;

    template <typename T>
    T& on(const std::string& control) {
        return get<T>(form_ + "." + control);
    }

    /// Boxes stand behind the words and commands.
    std::string effectsOf(const std::string& hands) {
        trace_.clear();
        std::istringstream tokens(hands);
        for (std::string token; tokens >> token;)
            act(token);
        std::vector<std::string> all;
        for (const WireAccess& access : trace_.accesses())
            if (access.kind == WireAccess::Kind::FrameOut)
                all.push_back(textOf(access.frame));
        for (const std::string& box : boxes.takeTexts())
            all.push_back("[" + box + "]");
        return fmt::format("{}", fmt::join(all, " "));
    }

    void expect(const std::string& shows) {
        std::istringstream wanted(shows);
        for (std::string one; std::getline(wanted, one, ';');)
            if (const std::size_t colon = one.find(':'); colon != std::string::npos)
                EXPECT_EQ(on<forms::Label>(one.substr(0, colon)).caption(), one.substr(colon + 1));
            else if (one.ends_with('+') || one.ends_with('-'))
                EXPECT_EQ(control(one.substr(0, one.size() - 1)).visible(), one.ends_with('+'))
                    << one;
            else
                EXPECT_EQ(nibble(one.substr(0, one.find('='))),
                          std::stoi(one.substr(one.find('=') + 1), nullptr, 16))
                    << one;
    }

    void walk(const std::vector<PanelStep>& steps) {
        for (const PanelStep& step : steps) {
            SCOPED_TRACE(step.hands);
            EXPECT_EQ(effectsOf(step.hands), step.effects);
            expect(step.shows);
        }
    }

private:
    static std::string textOf(const UsbFrame& frame) {
        if (frame[0] == 0)
            return fmt::format("<{:02X}>", fmt::join(frame, " "));
        EXPECT_EQ(frame[0], 8);
        return fmt::format("{:02X}{}", frame[3], frame[7] == 0 ? "" : fmt::format("/{}", frame[7]));
    }

    forms::Control& control(const std::string& name) {
        return program.forms().form(form_).control(name);
    }

    void act(const std::string& token) {
        if (token.starts_with('!')) {
            dongle.catchUp();
            Chip& chip = *dongle.chip();
            std::string name = token.substr(1);
            std::replace(name.begin(), name.end(), '_', ' ');
            chip.turn(switchNamed(chip, name), true);
            return;
        }
        if (token.ends_with('*'))
            return on<forms::Timer>(token.substr(0, token.size() - 1)).fire();
        const std::size_t sign = token.find('=');
        forms::Control& named = control(token.substr(0, sign));
        if (sign == std::string::npos)
            return named.click();
        const std::string value = token.substr(sign + 1);
        if (auto* bar = dynamic_cast<forms::ScrollBar*>(&named))
            bar->move(std::stoi(value));
        else if (auto* list = dynamic_cast<forms::ComboBox*>(&named))
            list->select(std::stoi(value));
        else
            dynamic_cast<forms::TextBox&>(named).edit(value);
    }

    /// Labels that are lit, of a row that begins with this one.
    int nibble(const std::string& first) {
        const std::size_t bracket = first.find('(');
        const int index = bracket == std::string::npos ? 0 : std::stoi(first.substr(bracket + 1));
        int value = 0;
        for (int bit = 0; bit < 4; ++bit) {
            const auto& label =
                on<forms::Label>(fmt::format("{}({})", first.substr(0, bracket), index + bit));
            if (label.backColor() == 0x8080FF)
                value |= 1 << bit;
            else
                EXPECT_EQ(label.backColor(), 0xFFFFC0U) << label.fullName();
        }
        return value;
    }

    const std::string form_;
    WireTrace trace_;
};

} // namespace bitlux::test
