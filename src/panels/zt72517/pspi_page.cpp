#include "panels/zt72517/pspi_page.h"

#include "panels/common/colours.h"
#include "platform/conversions.h"
#include "platform/dongle_commands.h"
#include "platform/failure.h"
#include "platform/scoped_value.h"
#include "transfer/dongle_frame.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <fmt/format.h>

namespace bitlux::zt72517 {

namespace {

constexpr std::int32_t partNumber = 72517;
constexpr int tabThatRefreshes = 3; ///< by its position, for any part
constexpr int shortestInterval = 100;
constexpr int firstInterval = 500;
constexpr int longestInterval = 2000;

/// Bits of the configuration byte.
constexpr int crankBit = 1;
constexpr int wakeUpBit = 2;
constexpr int slewRateFactor = 4;
constexpr int nerrBit = 16;
constexpr int slewRateBit = 32;

/// The lines by the buttons of the state diagram.
constexpr std::array<std::int16_t, 4> modes{0, 1, 3, 2};
constexpr int canFailureFlags = 3; ///< of the third row, from its first on
constexpr int canFailureLine = 3;

constexpr std::array<const char*, 8> canFailures{
    "No CAN BUS failure",  "CANL short to gnd", "CANL short to Vdd", "CANL short to Vbat",
    "??CAN BUS failure??", "CANH short to gnd", "CANH short to Vdd", "CANH short to Vbat"};

using Captions = std::initializer_list<const char*>;

/// Controls with their captions; options have a group.
template <typename T, typename... Group>
forms::ControlArray<T> row(forms::Form& form, const char* name, Captions captions, int first,
                           Group&... group) {
    return {name, first, first + static_cast<int>(captions.size()) - 1,
            [&](const std::string& arrayName, int index) {
                return std::make_unique<T>(form, group..., arrayName,
                                           captions.begin()[index - first], index);
            }};
}

constexpr Captions canFlags{"CANF0", "CANF1", "CANF2", "Tx-PD", "Rx-PR", "Bus Dom"};
constexpr Captions supplyFlags{"VDD Low", "VIO Low", "VSUV", "VSOV", "CAN cur", "VDD Temp"};

/// Index of the selected option, -1 for none.
int selectedIn(const forms::ControlArray<forms::OptionButton>& all) {
    for (const auto& option : all)
        if (option->value())
            return option->index().value();
    return -1;
}

} // namespace

FlagLine::FlagLine(forms::Form& form, const char* name, std::uint8_t readCommand, int first,
                   Captions captions)
    : command(readCommand),
      flags(row<forms::Label>(form, name, captions, first)),
      read(form, fmt::format("{}_ref", name), "OK") {}

PspiPage::PspiPage(forms::Form& form, Parts parts)
    : parts_(std::move(parts)),
      session_(parts_.session),
      etat(form, "etat", "State diagram"),
      mode(row<forms::Button>(
          form, "mode", {"Standby", "Listen Only", "Normal Mode", "Go to Sleep  and Sleep Mode"},
          0)),
      frame_nstb(form, "frame_nstb", "NSTB"),
      opt_nstb(row<forms::OptionButton>(form, "opt_nstb", {"0", "1"}, 0, nstbGroup_)),
      frame_en(form, "frame_en", " EN "),
      opt_en(row<forms::OptionButton>(form, "opt_en", {"0", "1"}, 0, enGroup_)),
      opt_valid(form, "opt_valid", "OK"),
      can_wu_opt(form, "can_wu_opt", "CAN wu"),
      crank_opt(form, "crank_opt", "Crank"),
      nerr_opt(form, "nerr_opt", "NERR ext"),
      frame_sr(form, "frame_sr", "SlewRate"),
      sr_opt(row<forms::OptionButton>(form, "sr_opt", {"0", "1", "2"}, 0, slewRateGroup_)),
      TextHexPSPI(form, "TextHexPSPI", "Send Hexa to PSPI"),
      byte_to_send(form, "byte_to_send"),
      send_pspi(form, "send_pspi", "Send PSPI"),
      label_bit_read(form, "label_bit_read", "Bit Read PSPI"),
      bit_read(form, "bit_read", 8, "0"),
      flagLines{{{form, "flag_line1", 0, 0, {"CAN F", "VMONF", "CAN WU", "LxWU", "BATFAIL"}},
                 {form, "flag_line2", 31, 1, {"SPIerr", "Test/def", "WILS"}},
                 {form, "flag_line3", 64, 0, canFlags},
                 {form, "flag_line4", 95, 0, supplyFlags}}},
      can_fail_text(form, "can_fail_text", canFailures.front()),
      auto_opt(row<forms::OptionButton>(form, "auto_opt", {"ON", "OFF"}, 0, autoGroup_)),
      HScroll1(form, "HScroll1", shortestInterval, longestInterval),
      refresh_aff(form, "refresh_aff", fmt::format("{}", firstInterval)),
      Label2(form, "Label2", 1, "ms"),
      timer_flag(form, "timer_flag", firstInterval) {
    byte_to_send.setText("00");
    HScroll1.setValue(firstInterval);
    opt_nstb(0).setValue(true);
    opt_en(0).setValue(true);
    sr_opt(0).setValue(true);
    auto_opt(1).setValue(true);
    registerProcedures(form);
    linkFailed_ = parts_.dongle.failed.follow([this] { auto_opt(1).setValue(true); });
}

void PspiPage::registerProcedures(forms::Form& form) {
    form.procedure("SendPSPI", [this] { SendPSPI(); });
    form.procedure("chg_state", [this] { chg_state(); });
    form.procedure("slr_opt", [this] { slr_opt(); });
    form.procedure("decod_flag", [this](std::uint8_t, int number) { decod_flag(number); });
    form.procedure("ShowPSPIBits", [this](std::uint8_t reply) { ShowPSPIBits(reply); });
    form.procedure("mode_Click", [this](int index) { mode_Click(index); });
    form.procedure("opt_valid_Click", [this] { opt_valid_Click(); });
    form.procedure("send_pspi_Click", [this] { send_pspi_Click(); });
    form.keyProcedure("byte_to_send_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            send_pspi_Click();
    });
    for (int n = 1; n <= static_cast<int>(flagLines.size()); ++n)
        form.procedure(fmt::format("flag_line{}_ref_Click", n), [this, n] { readFlags(n); });
    for (const char* box : {"crank_opt", "can_wu_opt", "nerr_opt"})
        form.procedure(fmt::format("{}_Click", box), [this] { slr_opt(); });
    form.procedure("sr_opt_Click", [this](int) { slr_opt(); });
    form.procedure("auto_opt_Click", [this](int) { auto_opt_Click(); });
    form.procedure("HScroll1_Change", [this] { HScroll1_Change(); });
    form.procedure("timer_flag_Timer", [this] { timer_flag_Timer(); });
}

bool PspiPage::transfer(int byte) {
    if (!canSend())
        return false;
    UsbFrame frame{};
    frame[0] = frameByte(dongle::pspiLength + ((session_.USBExtraPins1 & 1) != 0 ? 0x80 : 0));
    frame[1] = dongle::pspi;
    frame[2] =
        frameByte(session_.PSPIMode + (session_.PSPIModeChange ? 0 : int{dongle::pspiHasByte}));
    frame[3] = frameByte(byte);
    const ScopedValue waits(waits_, true);
    session_.USBReadDone = parts_.dongle.exchangeInTurns(frame, answer_, parts_.loop);
    if (!session_.USBReadDone)
        timer_flag.disable(); // while the page is hidden the option alone does not
    return session_.USBReadDone;
}

bool PspiPage::transferByte(int byte) {
    if (!transfer(byte))
        return false;
    session_.PSPIReply = answer_[frameData];
    session_.USBReadDone = false;
    return true;
}

void PspiPage::SendPSPI() {
    transfer(session_.SingleWordBits.at(0));
}

void PspiPage::chg_state() {
    if (!canSend())
        return;
    session_.PSPIModeChange = true;
    SendPSPI();
    // Without an answer it stays set, so that the next byte includes the change.
    if (std::exchange(session_.USBReadDone, false))
        session_.PSPIModeChange = false;
}

void PspiPage::mode_Click(int index) {
    forms::Button& chosen = mode(index);
    if (!canSend())
        return;
    for (const auto& button : mode)
        button->enable();
    chosen.disable();
    session_.PSPIMode = modes.at(static_cast<std::size_t>(index));
    opt_nstb(session_.PSPIMode & 1).setValue(true);
    opt_en(session_.PSPIMode >> 1).setValue(true);
    chg_state();
}

void PspiPage::opt_valid_Click() {
    if (!canSend())
        return;
    session_.PSPIMode = static_cast<std::int16_t>(std::max(selectedIn(opt_nstb), 0) +
                                                  2 * std::max(selectedIn(opt_en), 0));
    chg_state();
}

int PspiPage::configuration() const {
    const int slewRate = selectedIn(sr_opt);
    return (crank_opt.checked() ? crankBit : 0) + (can_wu_opt.checked() ? wakeUpBit : 0) +
           (nerr_opt.checked() ? nerrBit : 0) +
           (slewRate < 0 ? 0 : slewRateFactor * slewRate + slewRateBit);
}

void PspiPage::showConfiguration(int byte) {
    const ScopedValue adjusting(adjusting_, true);
    crank_opt.setValue((byte & crankBit) != 0 ? 1 : 0);
    can_wu_opt.setValue((byte & wakeUpBit) != 0 ? 1 : 0);
    nerr_opt.setValue((byte & nerrBit) != 0 ? 1 : 0);
    slewRateGroup_.clear();
    if ((byte & slewRateBit) != 0)
        sr_opt(byte / slewRateFactor & 3).setValue(true);
}

void PspiPage::slr_opt() {
    if (adjusting_)
        return;
    if (!canSend()) // the options continue to show the state of the chip
        return showConfiguration(sent_);
    sent_ = configuration();
    transferByte(sent_);
}

void PspiPage::send_pspi_Click() {
    if (!canSend())
        return;
    const std::string digits = byte_to_send.text().substr(0, 2);
    int byte = 0;
    for (const char digit : digits)
        byte = hexDigit(digit) < 0 || byte < 0 ? -1 : 16 * byte + hexDigit(digit);
    if (digits.empty() || byte < 0) {
        parts_.boxes.show({.text = "Not a valid hex number!"});
        return;
    }
    if (transferByte(byte))
        ShowPSPIBits(session_.PSPIReply);
}

bool PspiPage::readFlags(int number) {
    if (!transferByte(line(number).command))
        return false;
    ShowPSPIBits(session_.PSPIReply);
    decod_flag(number);
    if (number == canFailureLine)
        showCanFailure();
    return true;
}

void PspiPage::ShowPSPIBits(std::uint8_t reply) {
    for (const auto& bit : bit_read)
        bit->setCaption((reply >> bit->index().value() & 1) != 0 ? "1" : "0");
}

const FlagLine& PspiPage::line(int number) const {
    if (number < 1 || number > static_cast<int>(flagLines.size()))
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("Subscript out of range: there is no flag line {}", number));
    return flagLines[static_cast<std::size_t>(number - 1)];
}

void PspiPage::decod_flag(int number) {
    for (const auto& flag : line(number).flags) {
        const std::string& bit = bit_read(flag->index().value()).caption();
        if (bit == "0" || bit == "1")
            flag->setBackColor(bit == "0" ? forms::windowColor : forms::desktopColor);
    }
}

void PspiPage::showCanFailure() {
    std::size_t code = 0;
    for (int flag = 0; flag < canFailureFlags; ++flag)
        if (line(canFailureLine).flags(flag).backColor() == forms::desktopColor)
            code += std::size_t{1} << flag;
    can_fail_text.setCaption(canFailures.at(code));
    can_fail_text.setBackColor(code == 0 ? forms::buttonFaceColor : alarmColour);
}

void PspiPage::auto_opt_Click() {
    if (parts_.selectedPart() == partNumber)
        timer_flag.setEnabled(auto_opt(0).value());
}

void PspiPage::HScroll1_Change() {
    timer_flag.setInterval(HScroll1.value());
    refresh_aff.setCaption(fmt::format("{}", HScroll1.value()));
}

void PspiPage::timer_flag_Timer() {
    for (int n = 1; n <= static_cast<int>(flagLines.size()); ++n)
        if (parts_.tabs.selected() != tabThatRefreshes || !readFlags(n))
            return; // one message is enough
}

} // namespace bitlux::zt72517
