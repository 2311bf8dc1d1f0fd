// Random sessions through a file and back.

#include "sending/batch_bench.h"
#include "support/state_text.h"

#include <array>
#include <random>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Makes random settings, names and lists as a user does.
class RandomInput {
public:
    RandomInput(BatchBench& bench, unsigned seed) : bench_(bench), random_(seed) {}

    void configure() {
        ConfigureDialog& dialog = bench_.program.dialog();
        for (forms::Control* control : dialog.controls())
            touch(*control);
        dialog.ChkSerialPort.setValue(bench_.session().USBReady ? 1 : 0);
        dialog.optHex.setValue(true);
        dialog.cmbSPIWordLength.setText(std::to_string(upTo(160) + 1));
        if (dialog.CheckEnable72516.checked()) // four tabs are possible
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

/// All variables of the session by name, the lists, and what Save would write. On the dongle the
/// pins of the port stay what they were.
std::string stateOf(BatchBench& bench) {
    std::set<std::string_view> others{"ConfigDirty", "ConfigTab", "SingleWordBits"};
    std::string text;
    if (bench.session().USBReady)
        others.insert({"CSPin", "DIPin", "ClockPin", "DOPin", "DataPortPins", "LPTPortAddress",
                       "SavedCSText", "SavedDIText", "SavedCLKText", "SavedDOText",
                       "SavedPortIndex"});
    else
        text = bench.program.mainForm().files.text();
    return text + variablesOf(bench.session(), others) +
           fmt::format("{}\n{}", bench.sendLines(),
                       bench.get<forms::ComboBox>("frmMain.cmbBatches").items());
}

TEST(ConfigurationRoundTrip, RestoresRandomSessions) {
    const TemporaryFolder folder;
    const std::string name = folder.path("session.spi");
    for (const auto withDongle : {TestBench::WithDongle::No, TestBench::WithDongle::Yes})
        for (unsigned seed = 1; seed <= 40; ++seed) {
            SCOPED_TRACE(seed);
            BatchBench bench("8", withDongle);
            RandomInput input(bench, seed);
            input.configure();
            input.fillLists();
            EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
            bench.fileDialogs.answer(name);
            bench.choose("frmMain.itemSaveAs");

            BatchBench other("16", withDongle);
            other.program.open(name);
            EXPECT_EQ(other.boxes.takeTexts(), Texts{});
            if (bench.session().QuickCommandTableEmpty == ConstOff) {
                EXPECT_EQ(stateOf(other), stateOf(bench));
            }
        }
}

} // namespace
} // namespace bitlux::test
