#pragma once

#include "panels/common/auto_reads.h"
#include "panels/common/command_store.h"
#include "panels/common/panel_form.h"
#include "panels/common/sequence_stops.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/line_commands.h"
#include "panels/zt72518/watchdog.h"
#include "platform/forms/timer.h"
#include "support/test_bench.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {

using Texts = std::vector<std::string>;
using Names = std::set<std::string>;
using Bits = std::vector<int>;

constexpr std::int64_t millisecond = 1'000'000;
constexpr forms::Color plain = 0xFFFFC0;   ///< of a bit that is 1, on most panels
constexpr forms::Color striped = 0xFFC0C0; ///< of one that was read, in the other rows

inline Texts split(const std::string& text, char separator) {
    Texts parts;
    std::istringstream rest(text);
    for (std::string part; std::getline(rest, part, separator);)
        parts.push_back(part);
    return parts;
}

/// What a user does on a panel, and the result.
struct PanelStep {
    /// Controls that are clicked, "Name=5" for a bar, a list or a text, "Row=E8" to click bits
    /// until the row has this value; "Name*" is a tick of a timer, "!Group/Flag" turns a switch of
    /// the chip on, with underscores for blanks; "@20" lets milliseconds pass.
    const char* hands;
    const char* effects = ""; ///< as of PanelBench::outcomeOf
    /// Separated by semicolons: "Row=E8" and "Row~E8" are a row lit in its first and in the striped
    /// colour, "Row(4)=8" the part of it that begins there, "Name:text" a caption or a text,
    /// "Name#FF" a back colour, "Name+" and "Name-" a control that is visible or hidden, "Name^1" a
    /// choice that is made and "Name^0" one that is not, "Name>text" what the chip reports of its
    /// state.
    const char* shows = "";
};

/// How a panel shows the bits of a row.
struct PanelRows {
    int bits = 8; ///< of a row, or of a part of it
    forms::Color one = plain;
};

/// The program with a dongle and the panel of a chip open.
class PanelBench : public TestBench {
public:
    explicit PanelBench(const std::string& device = "loopback", const Texts& replies = {},
                        std::string form = "ZT72518", PanelRows rows = {},
                        void (*prepare)(TestBench&) = nullptr)
        : TestBench(device, replies, WithDongle::Yes), form_(std::move(form)), rows_(rows) {
        if (prepare != nullptr)
            prepare(*this);
        loop.drive(program.forms());
        program.forms().show(form_);
        wordBits_ = panel().chip().word.bits;
        boxes.takeTexts();
        program.startRecording(trace);
    }
    ~PanelBench() { program.stopRecording(); }
    PanelBench(const PanelBench&) = delete;
    PanelBench& operator=(const PanelBench&) = delete;

    PanelForm& panel() { return program.panels().touch("zt" + form_.substr(2)); }
    SequenceLists& lists() { return panel().sequence.lists; }

    [[nodiscard]] std::string full(const std::string& control) const {
        return control.find('.') == std::string::npos ? form_ + "." + control : control;
    }
    template <typename T>
    T& on(const std::string& control) {
        return get<T>(full(control));
    }
    forms::Control& control(const std::string& name) { return program.forms().control(full(name)); }
    void press(const std::string& button) { on<forms::Button>(button).click(); }
    void choose(const std::string& option) { on<forms::OptionButton>(option).click(); }
    void tick(const std::string& box) { on<forms::CheckBox>(box).click(); }
    void type(const std::string& box, const std::string& text) {
        on<forms::TextBox>(box).setText(text);
    }
    std::string caption(const std::string& label) { return on<forms::Label>(label).caption(); }
    Texts column(const std::string& list) { return lines(full(list)); }

    /// Labels of an array whose back colour is `colour`.
    Bits lit(const std::string& labels, forms::Color colour) {
        Bits result;
        const std::string name = full(labels);
        const std::size_t dot = name.find('.');
        for (const forms::Control* one : program.forms().form(name.substr(0, dot)).controls())
            if (one->name() == name.substr(dot + 1) && one->backColor() == colour)
                result.push_back(one->index().value());
        return result;
    }
    /// The value of a row, or of the part of it that begins with "Row(8)".
    std::uint64_t row(const std::string& name) { return rowIn(name, rows_.one); }
    /// Clicks the bits of a row until it shows a value.
    void pokeTo(const std::string& name, std::uint64_t wanted) {
        for (int bit = 0; bit < 32; ++bit) // a click may light others as well
            if (((row(name) ^ wanted) >> bit & 1) != 0)
                on<forms::Label>(fmt::format("{}({})", name, bit)).click();
    }
    /// Turns a switch of the chip, by the name that `bitlux send --turn-on` knows.
    void turn(const std::string& name, bool on = true) {
        dongle.catchUp();
        dongle.chip()->turn(switchNamed(*dongle.chip(), name), on);
    }
    /// What the chip reports of its state.
    std::string reading(const std::string& name) {
        dongle.catchUp();
        for (const Reading& one : dongle.chip()->readings())
            if (one.name == name)
                return one.value;
        return "no such reading";
    }

    /// What went out since the last call: words as "40A5", with '!' when they trigger, "/1" for the
    /// last byte of their frame and ":24" when they have another length than the chip's; commands
    /// to the dongle as "<00 15 00 20 00 00 00 00>".
    std::string sent() {
        Texts all;
        for (const WireAccess& access : trace.accesses())
            if (access.kind == WireAccess::Kind::FrameOut)
                all.push_back(textOf(access.frame));
        trace.clear();
        return fmt::format("{}", fmt::join(all, " "));
    }
    /// What `action` sends, and the lines that it appends, as "+MUX Write=A5".
    template <typename Action>
    std::string effects(Action action) {
        const int before = lists().last();
        trace.clear();
        action();
        std::string all = sent();
        for (int row = before + 1; row <= lists().last(); ++row)
            all += fmt::format("{}+{}={}", all.empty() ? "" : " ", lists().command(row),
                               lists().value(row));
        return all;
    }
    void work(const std::string& hands) {
        for (const std::string& hand : split(hands, ' '))
            act(hand);
    }
    std::string effectsOf(const std::string& hands) {
        return effects([&] { work(hands); });
    }
    /// Effects, and the boxes that came, as "[text]".
    std::string outcomeOf(const std::string& hands) {
        std::string all = effectsOf(hands);
        for (const std::string& box : boxes.takeTexts())
            all += fmt::format("{}[{}]", all.empty() ? "" : " ", box);
        return all;
    }
    void expect(const std::string& shows) {
        for (const std::string& one : split(shows, ';'))
            EXPECT_EQ(shown(one), one);
    }
    template <typename Steps>
    void walk(const Steps& steps) {
        for (const PanelStep& step : steps) {
            SCOPED_TRACE(step.hands);
            EXPECT_EQ(outcomeOf(step.hands), step.effects);
            expect(step.shows);
        }
    }
    /// Every button of these forms is in a step or among the others.
    template <typename Steps>
    void expectAllButtonsIn(const Steps& steps, const Texts& forms, const std::string& others) {
        std::string all = others;
        for (const PanelStep& step : steps)
            all += fmt::format(" {}", step.hands);
        Names known;
        for (const std::string& hand : split(all, ' '))
            known.insert(full(hand));
        for (const std::string& form : forms)
            for (const forms::Control* any : program.forms().form(form).controls())
                if (any->kind() == forms::Control::Kind::Button) {
                    EXPECT_TRUE(known.contains(any->fullName())) << any->fullName();
                }
    }

    /// Makes a choice: clicks a box or an option, or edits a list, of which "Combo:6_ms" has the
    /// text with underscores for blanks.
    void make(const std::string& choice) {
        const std::size_t colon = choice.find(':');
        if (colon == std::string::npos)
            return control(choice).click();
        std::string text = choice.substr(colon + 1);
        std::replace(text.begin(), text.end(), '_', ' ');
        on<forms::ComboBox>(choice.substr(0, colon)).edit(text);
    }
    /// Whether a choice is the present one.
    bool isMade(const std::string& choice) {
        std::string text = choice.substr(std::min(choice.find(':'), choice.size() - 1) + 1);
        std::replace(text.begin(), text.end(), '_', ' ');
        forms::Control& any = control(choice.substr(0, choice.find(':')));
        if (const auto* list = dynamic_cast<forms::ComboBox*>(&any))
            return list->text() == text;
        if (const auto* box = dynamic_cast<forms::CheckBox*>(&any))
            return box->checked();
        return dynamic_cast<forms::OptionButton&>(any).value();
    }

    /// All lines of the sequence but the headers, as "MUX Write=A5".
    std::string sequence() {
        Texts result;
        for (int row = 1; row <= lists().last(); ++row)
            result.push_back(fmt::format("{}={}", lists().command(row), lists().value(row)));
        return fmt::format("{}", fmt::join(result, " "));
    }
    /// Fills the sequence: "MUX Write=A5;Wait=10".
    void fill(const std::string& sequence) {
        lists().clear();
        for (const std::string& line : split(sequence, ';')) {
            const std::size_t equals = line.find('=');
            lists().append(line.substr(0, equals), line.substr(equals + 1));
        }
    }
    /// Plays a sequence; what went out.
    std::string run(const std::string& sequence) {
        fill(sequence);
        return run();
    }
    std::string run() {
        trace.clear();
        press("Cm_Run_Seq");
        return sent();
    }
    /// User input during the nth turn of the loop.
    void atTurn(int turn, const std::string& hands) {
        loop.atTurn(turn, [this, hands] { work(hands); });
    }
    /// Lets time pass in the loop of the program; what went out.
    std::string pass(std::int64_t milliseconds) {
        trace.clear();
        for (const std::int64_t end = clock.nanoseconds() + milliseconds * millisecond;
             clock.nanoseconds() < end;)
            loop.waitForEvents(end - clock.nanoseconds());
        return sent();
    }

    WireTrace trace;

protected:
    void act(const std::string& hand) {
        const std::size_t sign = hand.find('=');
        const std::string name = hand.substr(0, sign);
        if (hand[0] == '!') {
            std::string flag = hand.substr(1);
            std::replace(flag.begin(), flag.end(), '_', ' ');
            return turn(flag);
        }
        if (hand[0] == '@')
            return clock.idle(std::stoi(hand.substr(1)) * millisecond);
        if (hand.ends_with('*'))
            return on<forms::Timer>(hand.substr(0, hand.size() - 1)).fire();
        if (sign == std::string::npos)
            return control(name).click();
        const std::string value = hand.substr(sign + 1);
        forms::Control* const named = find(name);
        if (named == nullptr)
            pokeTo(name, std::stoul(value, nullptr, 16));
        else if (auto* bar = dynamic_cast<forms::ScrollBar*>(named))
            bar->move(std::stoi(value));
        else if (auto* list = dynamic_cast<forms::ComboBox*>(named))
            list->select(std::stoi(value));
        else if (auto* lines = dynamic_cast<forms::ListBox*>(named))
            lines->select(std::stoi(value));
        else
            dynamic_cast<forms::TextBox&>(*named).edit(value);
    }
    /// What is really seen of an item of a step.
    std::string shown(const std::string& item) {
        const std::size_t end = item.find_first_of("=~:>+-#^");
        const std::string name = item.substr(0, end);
        const auto digits = static_cast<int>(item.size() - end - 1);
        switch (item.at(end)) {
        case ':':
            if (const auto* box = dynamic_cast<forms::TextBox*>(&control(name)))
                return name + ":" + box->text();
            return name + ":" + caption(name);
        case '#':
            return fmt::format("{}#{:X}", name, control(name).backColor());
        case '^':
            return name + (isMade(name) ? "^1" : "^0");
        case '>':
            return name + ">" + reading(name);
        case '+':
        case '-':
            return name + (control(name).visible() ? "+" : "-");
        case '~':
            return fmt::format("{}~{:0{}X}", name, rowIn(name, striped), digits);
        default:
            return fmt::format("{}={:0{}X}", name, row(name), digits);
        }
    }

private:
    forms::Control* find(const std::string& name) {
        const std::string wanted = full(name);
        for (forms::Control* any :
             program.forms().form(wanted.substr(0, wanted.find('.'))).controls())
            if (any->fullName() == wanted)
                return any;
        return nullptr;
    }
    std::uint64_t rowIn(const std::string& name, forms::Color one) {
        const std::size_t bracket = name.find('(');
        const int first = bracket == std::string::npos ? 0 : std::stoi(name.substr(bracket + 1));
        std::uint64_t value = 0;
        for (const int index : lit(name.substr(0, bracket), one))
            if (index >= first && index < first + rows_.bits)
                value |= std::uint64_t{1} << (index - first);
        return value;
    }
    [[nodiscard]] std::string textOf(const UsbFrame& frame) const {
        const int bits = frame[0] & 0x3F;
        if (bits == 0)
            return fmt::format("<{:02X}>", fmt::join(frame, " "));
        const auto* const word = frame.begin() + 3;
        return fmt::format("{:02X}{}{}{}", fmt::join(word, word + (bits + 7) / 8, ""),
                           bits == wordBits_ ? "" : fmt::format(":{}", bits),
                           (frame[0] & 0x80) != 0 ? "!" : "",
                           frame[7] == 0 ? "" : fmt::format("/{}", frame[7]));
    }

    std::string form_;
    PanelRows rows_;
    int wordBits_ = 0;
};

} // namespace bitlux::test
