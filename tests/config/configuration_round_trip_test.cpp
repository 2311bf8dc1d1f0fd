// Random sessions through a file and back.

#include "sending/batch_bench.h"

#include <array>
#include <random>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Makes random settings, names and lists with a hand's means.
class RandomHand {
public:
    RandomHand(BatchBench& bench, unsigned seed) : bench_(bench), random_(seed) {}

    void configure() {
        ConfigureDialog& dialog = bench_.program.dialog();
        for (forms::Control* control : dialog.controls())
            touch(*control);
        dialog.ChkSerialPort.setValue(0);
        dialog.optHex.setValue(true);
        dialog.cmbSPIWordLength.setText(std::to_string(upTo(160) + 1));
        if (dialog.CheckEnable72516.checked()) // four tabs find room
            dialog.CheckEnable72517.setValue(0);
        namePins(dialog.extraPins.dataPins);
        namePins(dialog.extraPins.controlPins);
        dialog.cmdApply_Click();
    }

    void fillLists() {
        for (int i = upTo(8); i > 0; --i)
            bench_.save(fmt::format("{} {}", i, text()), word());
        const auto lines = [this] {
            Texts result;
            for (int i = upTo(5); i > 0; --i)
                result.push_back(upTo(2) == 0 ? "* Pause" : text());
            return result;
        };
        for (int i = upTo(4); i > 0; --i) {
            bench_.setToSend(lines());
            bench_.saveBatch(fmt::format("{}{}", text(), i));
        }
        bench_.setToSend(lines());
    }

private:
    int upTo(int last) { return std::uniform_int_distribution(0, last)(random_); }

    /// Words of all characters that a file can hold.
    std::string text() {
        constexpr std::array characters{"a", " ",  "  ", "\"",     ",",      "*",  "#TRUE#",
                                        "0", "\t", "'",  "\u20AC", "\u00FF", "\\", "\",\""};
        std::string result = "t";
        for (int i = upTo(6); i > 0; --i)
            result += characters.at(static_cast<std::size_t>(upTo(13)));
        return result;
    }

    std::string word() {
        std::string digits;
        for (int i = bench_.session().SPIWordLength / 4; i > 0; --i)
            digits += "0123456789abcdef"[upTo(15)];
        return digits.empty() ? "1" : digits;
    }

    void namePins(PinRows& rows) {
        for (int row = 0; row < rows.count(); ++row) {
            rows.name(row).setText(text());
            rows.assignment(row).setListIndex(
                rows.enabled(row) ? upTo(static_cast<int>(rows.assignment(row).items().size()) - 1)
                                  : -1);
        }
    }

    void touch(forms::Control& control) {
        if (auto* check = dynamic_cast<forms::CheckBox*>(&control))
            check->setValue(static_cast<std::int16_t>(upTo(1)));
        else if (auto* option = dynamic_cast<forms::OptionButton*>(&control))
            option->setValue(option->value() || upTo(1) == 1);
        else if (auto* combo = dynamic_cast<forms::ComboBox*>(&control))
            combo->setListIndex(upTo(static_cast<int>(combo->items().size()) - 1));
        else if (auto* box = dynamic_cast<forms::TextBox*>(&control))
            box->setText(box->name() == "txtMessageLimit" ? std::to_string(upTo(30000)) : text());
        else if (auto* tabs = dynamic_cast<forms::TabStrip*>(&control))
            tabs->setSelected(1 + upTo(tabs->count() - 1));
    }

    BatchBench& bench_;
    std::mt19937 random_;
};

/// What a file keeps of the session, as text to compare.
std::string stateOf(BatchBench& bench) {
    const Session& session = bench.session();
    std::string state =
        fmt::format("{} {} {} {} {} {} {} {} {} {} {} {} {} {} {} {}\n", session.PartName,
                    session.SPIWordLength, session.SPIType, session.MSBFirst == ConstOn,
                    session.DisplayHex, session.CSAssertLevel, session.DIOneLevel,
                    session.DOHighValue, session.CSPin, session.DIPin, session.DOPin,
                    session.ClockPin, session.LPTPortAddress, session.SessionLogEnabled == ConstOn,
                    session.ContinuousLogEnabled == ConstOn, session.ContinuousLogLimit);
    for (int tab = 3; tab <= bench.program.mainForm().tabs.TabStripMain.count(); ++tab)
        state += fmt::format("tab {}\n",
                             session.PartTabs.at(static_cast<std::size_t>(tab - 3)).PartNumber);
    const QuickCommandTable& table = session.QuickCommandTable;
    for (std::size_t row = 0; row < table.rows() && session.QuickCommandTableEmpty == ConstOff;
         ++row) {
        state += fmt::format("{}:", table.name(row));
        for (const std::int16_t bit : table.bits(row))
            state += std::to_string(bit);
        state += '\n';
    }
    for (const std::string& line : bench.sendLines())
        state += fmt::format("send {}\n", line);
    for (int n = 1; n < session.BatchCount(); ++n)
        for (const std::string& line : session.lstBatchList(n))
            state += fmt::format("batch {} {}\n", n, line);
    for (const Texts& names : {bench.get<forms::ComboBox>("frmMain.cmbBatches").items()})
        for (const std::string& name : names)
            state += fmt::format("listed {}\n", name);
    return state;
}

TEST(ConfigurationRoundTrip, BringsRandomSessionsBack) {
    const TemporaryFolder folder;
    const std::string name = folder.path("session.spi");
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        BatchBench bench;
        RandomHand hand(bench, seed);
        hand.configure();
        hand.fillLists();
        const Texts complaints = bench.boxes.takeTexts();
        ASSERT_EQ(complaints, Texts{});
        bench.fileDialogs.answer(name);
        bench.choose("frmMain.itemSaveAs");
        const std::string content = contentOf(name);

        BatchBench other("16");
        other.fileDialogs.answer(name);
        other.choose("frmMain.itemOpen");
        EXPECT_EQ(other.boxes.takeTexts(), Texts{});
        if (bench.session().QuickCommandTableEmpty == ConstOff) {
            EXPECT_EQ(stateOf(other), stateOf(bench));
        }
        bench.fileDialogs.answer(name);
        bench.choose("frmMain.itemSaveAs");
        EXPECT_EQ(contentOf(name), content);
    }
}

} // namespace
} // namespace bitlux::test
