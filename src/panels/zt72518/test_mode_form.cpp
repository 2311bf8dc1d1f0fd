#include "panels/zt72518/test_mode_form.h"

#include "platform/dongle_commands.h"
#include "platform/failure.h"
#include "platform/forms/form_set.h"
#include "transfer/dongle_frame.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr std::array<std::string_view, 4> tests{"Scan Test", "Peripheral Scan Test", "IDDQ Test",
                                                "Send this patern !"};
constexpr std::array testCommands{TestCommand::Scan, TestCommand::PeripheralScan,
                                  TestCommand::Iddq};
constexpr int patternTest = 3;
constexpr std::int16_t patternType = 1;
constexpr std::array<std::string_view, 2> termConditions{"Test in course",
                                                         "Test in course, with temperature offset"};
constexpr std::array<std::string_view, 2> volts{"3.3 V", "5 V"};
constexpr std::array<std::string_view, 2> lins{"LIN 0", "LIN 1"};

constexpr int longestTxd = 255;
constexpr double txdStep = 1.26; // microseconds
constexpr double txdLeast = 3.0;

/// The first one is selected.
forms::ControlArray<forms::OptionButton> options(forms::Form& form, forms::OptionGroup& group,
                                                 const char* name,
                                                 std::span<const std::string_view> captions) {
    forms::ControlArray<forms::OptionButton> array(
        name, 0, static_cast<int>(captions.size()) - 1,
        [&](const std::string& arrayName, int index) {
            return std::make_unique<forms::OptionButton>(
                form, group, arrayName, std::string(captions[static_cast<std::size_t>(index)]),
                index);
        });
    array(0).setValue(true);
    return array;
}

template <typename T>
forms::ControlArray<T> captioned(forms::Form& form, const char* name, int count,
                                 std::string_view (*caption)(std::size_t)) {
    return {name, 0, count - 1, [&form, caption](const std::string& arrayName, int index) {
                return std::make_unique<T>(
                    form, arrayName, std::string(caption(static_cast<std::size_t>(index))), index);
            }};
}

int selected(const forms::ControlArray<forms::OptionButton>& array) {
    const auto found =
        std::find_if(array.begin(), array.end(), [](const auto& one) { return one->value(); });
    return found == array.end() ? 0 : static_cast<int>(found - array.begin());
}

std::vector<std::string> thresholdNames() {
    std::vector<std::string> names;
    for (const TestThreshold& threshold : testThresholds) {
        names.emplace_back(threshold[0].name);
        if (!threshold[1].name.empty())
            names.back() += fmt::format(" - {}", threshold[1].name);
    }
    return names;
}

std::string lineOf(const TestSignal& signal) {
    return signal.description.empty() ? std::string(signal.name)
                                      : fmt::format("{} : {}", signal.name, signal.description);
}

void requireElement(int index, std::size_t count) {
    if (index < 0 || static_cast<std::size_t>(index) >= count)
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no element {}", index));
}

std::vector<std::string> threeBits() {
    return {"0", "1", "2", "3", "4", "5", "6", "7"};
}

/// The words of a command, the second with its low byte or "xx", or without it.
std::string wordText(TestCommand command, const std::string& second) {
    const std::string first =
        fmt::format("0x{:02X}{:02X}", testWordHigh, static_cast<int>(command));
    return second.empty() ? first
                          : fmt::format("{}, 0x{:02X}{}", first, secondTestWordHigh, second);
}

} // namespace

TestModeForm::TestModeForm(forms::FormSet& set, const Parts& parts)
    : Form(set, "TestMode", "Test Mode"),
      parts_(parts),
      words_(parts.chip->word, parts.session, parts.engine, parts.boxes),
      enter_test_mode(*this, "enter_test_mode", "Enter in Test mode"),
      can_lin(captioned<forms::Button>(*this, "can_lin", static_cast<int>(testFlags.size()),
                                       [](std::size_t i) { return testFlags.at(i).title; })),
      can_lin_lbl(captioned<forms::Label>(*this, "can_lin_lbl", static_cast<int>(testFlags.size()),
                                          [](std::size_t i) { return testFlags.at(i).caption; })),
      thres_combox(*this, "thres_combox", forms::ComboBox::Style::List, thresholdNames()),
      thres_lbl(*this, "thres_lbl", 2),
      thres_send(*this, "thres_send", "Send Threshold or flags"),
      term_cond(options(*this, termConditions, "term_cond", zt72518::termConditions)),
      term_send(*this, "term_send", "Thermal sensors"),
      trim_version(options(*this, trimVersions, "trim_version", zt72518::trimVersions)),
      trim_volt(options(*this, trimVolts, "trim_volt", volts)),
      trim_osci(options(*this, trimOscillators, "trim_osci", zt72518::trimOscillators)),
      trim_bias(options(*this, trimBiases, "trim_bias", zt72518::trimBiases)),
      trim_lin(options(*this, trimLins, "trim_lin", lins)),
      trim_fuse(options(*this, trimFuses, "trim_fuse", zt72518::trimFuses)),
      trimming_txd(*this, "trimming_txd", 0, longestTxd),
      trimmingLabels(*this, "trimming", 2),
      trim_send(*this, "trim_send", "Trimming"),
      tests_send(captioned<forms::Button>(*this, "tests_send", static_cast<int>(tests.size()),
                                          [](std::size_t i) { return tests.at(i); })),
      bit_6(*this, "bit_6", "Bit 6"),
      periph_dec(*this, "periph_dec", forms::ComboBox::Style::List, threeBits()),
      periph_scan_list(*this, "periph_scan_list", forms::ComboBox::Style::List, threeBits()),
      Text1(*this, "Text1") {
    trimmingLabels(0).setCaption("TXD low after Write2fuse SPI command");
    showTxdTime();
    showTxd(false);
    buildPattern();
    showWords();
    procedure("Send_SPI", [this] { Send_SPI(); });
    procedure("enter_test_mode_Click", [this] { this->set().form("frmMain").call("test_mode"); });
    procedure("can_lin_Click", [this](int index) { can_lin_Click(index); });
    procedure("thres_combox_Click", [this] { thres_combox_Click(); });
    procedure("thres_send_Click", [this] { thres_send_Click(); });
    procedure("term_send_Click", [this] { term_send_Click(); });
    procedure("trim_send_Click", [this] { trim_send_Click(); });
    procedure("trim_fuse_Click", [this](int index) { showTxd(index == burnFuses); });
    procedure("trimming_txd_Change", [this] { showTxdTime(); });
    procedure("trimming_txd_Scroll", [this] { showTxdTime(); });
    procedure("tests_send_Click", [this](int index) { tests_send_Click(index); });
    for (const char* name : {"bit_6_Click", "periph_dec_Click", "periph_scan_list_Click"})
        procedure(name, [this] { buildPattern(); });
    for (std::size_t i = 0; i < TestWords.size(); ++i)
        variable(fmt::format("TestWords({})", i), TestWords.at(i));
}

void TestModeForm::showWords() {
    for (int flag = 0; flag <= can_lin.last(); ++flag)
        can_lin(flag).setTooltip(wordText(TestCommand::CanLinFlag, fmt::format("{:02X}", flag)));
    thres_send.setTooltip(wordText(TestCommand::Threshold, "xx"));
    constexpr int thermal = static_cast<int>(TestCommand::Thermal);
    term_send.setTooltip(
        fmt::format("0x{0:02X}{1:02X} or 0x{0:02X}{2:02X}", testWordHigh, thermal, thermal + 1));
    trim_send.setTooltip(fmt::format("0x{:02X}xx, 0x{:02X}xx", testWordHigh, secondTestWordHigh));
    for (std::size_t test = 0; test < testCommands.size(); ++test)
        tests_send(static_cast<int>(test)).setTooltip(wordText(testCommands[test], ""));
    tests_send(patternTest).setTooltip(wordText(TestCommand::Pattern, "xx"));
}

void TestModeForm::choose(TestCommand command, std::uint8_t second) {
    TestWords = {testWordHigh, static_cast<std::uint8_t>(command), secondTestWordHigh, second};
}

std::uint64_t TestModeForm::wordIn(std::size_t place) const {
    return static_cast<std::uint64_t>(TestWords.at(place)) << 8 | TestWords.at(place + 1);
}

void TestModeForm::Send_SPI(std::optional<std::int16_t> type) {
    sendFirstWord(type);
    words_.send(wordIn(2), type);
}

void TestModeForm::sendFirstWord(std::optional<std::int16_t> type) {
    words_.send(wordIn(0), type);
}

void TestModeForm::can_lin_Click(int index) {
    requireElement(index, testFlags.size());
    choose(TestCommand::CanLinFlag, static_cast<std::uint8_t>(index));
    Send_SPI();
}

void TestModeForm::thres_combox_Click() {
    if (thres_combox.listIndex() < 0)
        return;
    const auto index = static_cast<std::uint8_t>(thres_combox.listIndex());
    choose(TestCommand::Threshold, index);
    for (int line = 0; line < 2; ++line)
        thres_lbl(line).setCaption(
            lineOf(testThresholds.at(index).at(static_cast<std::size_t>(line))));
}

void TestModeForm::thres_send_Click() {
    if (TestWords[1] == static_cast<std::uint8_t>(TestCommand::Threshold))
        Send_SPI();
    else
        parts_.boxes.show({.text = "Please select a command to send"});
}

void TestModeForm::term_send_Click() {
    choose(TestCommand::Thermal);
    TestWords[1] = static_cast<std::uint8_t>(TestWords[1] + selected(term_cond));
    sendFirstWord();
}

Trimming TestModeForm::trimming() const {
    return {.version = selected(trim_version),
            .is3V3 = trim_volt(0).value(),
            .oscillator = selected(trim_osci),
            .bias = selected(trim_bias),
            .lin0 = trim_lin(0).value(),
            .fuse = selected(trim_fuse)};
}

void TestModeForm::trim_send_Click() {
    TestWords = {testWordHigh, firstTrimByte(trimming()), secondTestWordHigh,
                 secondTrimByte(trimming())};
    if (selected(trim_fuse) != burnFuses)
        return Send_SPI();
    constexpr int wordBits = 16;
    parts_.session.WordToSend.assign(wordBits, 0);
    parts_.session.WordToSend[8] = TestWords[1];
    parts_.session.WordToSend[0] = TestWords[3];
    send_trimming();
}

void TestModeForm::send_trimming() {
    if (!parts_.session.USBReady)
        return;
    UsbFrame frame = commandFrame(dongle::trimming);
    frame[3] = static_cast<std::uint8_t>(parts_.session.WordToSend.at(8));
    frame[4] = static_cast<std::uint8_t>(parts_.session.WordToSend.at(0));
    frame[5] = static_cast<std::uint8_t>(trimming_txd.value());
    UsbFrame answer{};
    parts_.dongle.exchange(frame, answer, DongleLink::Wait::Unlimited);
}

void TestModeForm::showTxd(bool burns) {
    trimming_txd.setVisible(burns);
    for (const auto& label : trimmingLabels)
        label->setVisible(burns);
}

void TestModeForm::showTxdTime() {
    trimmingLabels(1).setCaption(
        fmt::format("~ {:.15g} µs", trimming_txd.value() * txdStep + txdLeast));
}

void TestModeForm::tests_send_Click(int index) {
    requireElement(index, tests.size());
    if (index == patternTest)
        return sendPattern();
    const TestCommand command = testCommands.at(static_cast<std::size_t>(index));
    choose(command);
    sendFirstWord();
    if (command != TestCommand::PeripheralScan)
        parts_.boxes.show({.text = "To leave test mode, ZT72518 must be powered down"});
}

void TestModeForm::buildPattern() {
    const int fields = (bit_6.checked() ? 1 << 6 : 0) + (std::max(periph_dec.listIndex(), 0) << 3) +
                       std::max(periph_scan_list.listIndex(), 0);
    const int kept = pattern().value_or(0) & (1 << 7);
    Text1.setText(fmt::format("{:08b}", kept | fields));
}

std::optional<std::uint8_t> TestModeForm::pattern() const {
    const std::string& text = Text1.text();
    if (text.empty() || text.size() > 8 || text.find_first_not_of("01") != std::string::npos)
        return std::nullopt;
    return static_cast<std::uint8_t>(std::stoul(text, nullptr, 2));
}

void TestModeForm::sendPattern() {
    const std::optional<std::uint8_t> byte = pattern();
    if (!byte) {
        parts_.boxes.show({.text = "Please enter a pattern of up to eight binary digits"});
        return;
    }
    choose(TestCommand::Pattern, *byte);
    Send_SPI(patternType);
}

} // namespace bitlux::zt72518
