#include "sending/single_word_page.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "sending/word_fit.h"
#include "sending/word_text.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace bitlux {

namespace {

forms::ControlArray<forms::Label> bitNumbers(forms::Form& form, const std::string& name) {
    return {
        name, 0, SingleWordPage::bitColumns - 1, [&form](const std::string& arrayName, int index) {
            return std::make_unique<forms::Label>(form, arrayName, fmt::format("{}", index), index);
        }};
}

constexpr std::string_view noBit = "x";

/// The page keeps one element more than the word of the applied length has bits.
Failure pageDoesNotFit(const Session& session) {
    const std::size_t elements = session.SingleWordBits.size();
    return doesNotFit("The word of this page", elements == 0 ? 0 : elements - 1,
                      session.SPIWordLength);
}

std::string_view bitCaption(std::int16_t bit) {
    return bit == 0 ? "0" : bit == 1 ? "1" : noBit;
}

} // namespace

SingleWordPage::SingleWordPage(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      frameSPIinSingle(form, "frameSPIinSingle", "SPI In"),
      frameSPIoutSingle(form, "frameSPIoutSingle", "SPI Out"),
      lblSItitle(form, "lblSItitle", "Word to Send (DI)"),
      lblSOtitle(form, "lblSOtitle", "Word Received (DO)"),
      cmdSI_single(form, "cmdSI_single", bitColumns, "0"),
      lblSO_single(form, "lblSO_single", bitColumns, "0"),
      lblInBitsSingle(bitNumbers(form, "lblInBitsSingle")),
      lblOutBitsSingle(bitNumbers(form, "lblOutBitsSingle")),
      lblHexDI(form, "lblHexDI", "Word to Send (DI):"),
      txtHexWordToSend(form, "txtHexWordToSend"),
      lblHexDO(form, "lblHexDO", "Word Received (DO):"),
      lblHexWordReceived(form, "lblHexWordReceived"),
      cmdAll0Single(form, "cmdAll0Single", "Clear All Bits"),
      cmdAll1Single(form, "cmdAll1Single", "Set All Bits") {
    txtHexWordToSend.setTooltip("Hex word to send");
    form.procedure("DoSPISingle", [this] { DoSPISingle(); });
    form.procedure("AdjustSPILabels", [this] { AdjustSPILabels(); });
    form.procedure("SetSpiWordLength", [this](int length) { SetSpiWordLength(toInt16(length)); });
    form.procedure("cmdSI_single_Click", [this](int index) { cmdSI_single_Click(index); });
    form.procedure("cmdAll0Single_Click", [this] { cmdAll0Single_Click(); });
    form.procedure("cmdAll1Single_Click", [this] { cmdAll1Single_Click(); });
    form.keyProcedure("txtHexWordToSend_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            parts_.run.cmdSendOnce_Click();
    });
}

void SingleWordPage::AdjustSPILabels() {
    const int shown = std::min<int>(session_.SPIWordLength, bitColumns);
    for (int i = 0; i < shown; ++i) {
        session_.SingleWordBits.at(static_cast<std::size_t>(i)) = 0;
        cmdSI_single(i).setCaption("0");
        lblSO_single(i).setCaption("0");
    }
    parts_.commands.deselectQuickCommand();
    const bool asHex = session_.DisplayHex != 0;
    for (forms::Control* control :
         {static_cast<forms::Control*>(&lblHexDI), static_cast<forms::Control*>(&lblHexDO),
          static_cast<forms::Control*>(&txtHexWordToSend),
          static_cast<forms::Control*>(&lblHexWordReceived)})
        control->setVisible(asHex);
    frameSPIinSingle.setVisible(!asHex);
    frameSPIoutSingle.setVisible(!asHex);
    if (!asHex) {
        constexpr int bitsThatFillTheRow = 33; // they take the place of the titles
        lblSItitle.setVisible(session_.SPIWordLength < bitsThatFillTheRow);
        lblSOtitle.setVisible(session_.SPIWordLength < bitsThatFillTheRow);
    }
}

void SingleWordPage::SetSpiWordLength(std::int16_t length) {
    if (length < 1)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("Subscript out of range: a word of {} bits", length));
    session_.SPIWordLength = length;
    session_.WordToSend.assign(static_cast<std::size_t>(length), 0);
}

void SingleWordPage::showBitColumns() {
    for (int i = 0; i < bitColumns; ++i) {
        const bool shown = i < session_.SPIWordLength;
        if (shown)
            cmdSI_single(i).setCaption(bitCaption(bitOf(static_cast<std::size_t>(i))));
        cmdSI_single(i).setVisible(shown);
        lblSO_single(i).setVisible(shown);
        lblInBitsSingle(i).setVisible(shown);
        lblOutBitsSingle(i).setVisible(shown);
    }
}

void SingleWordPage::cmdSI_single_Click(int index) {
    forms::Button& button = cmdSI_single(index);
    if (button.caption() == "0" || button.caption() == "1") {
        const std::int16_t bit = button.caption() == "0" ? 1 : 0;
        session_.SingleWordBits.at(static_cast<std::size_t>(index)) = bit;
        button.setCaption(bitCaption(bit));
    } else {
        parts_.boxes.show({.text = "No Initial Value Set"});
    }
    parts_.commands.deselectQuickCommand();
    if (parts_.run.cmdSendOnce.enabled())
        parts_.run.cmdSendOnce.setFocus();
}

void SingleWordPage::cmdAll0Single_Click() {
    setAllBits(0);
}

void SingleWordPage::cmdAll1Single_Click() {
    setAllBits(1);
}

void SingleWordPage::setAllBits(std::int16_t bit) {
    if (session_.DisplayHex == 0) {
        for (int i = session_.SPIWordLength - 1; i >= 0; --i) {
            if (i < bitColumns)
                cmdSI_single(i).setCaption(bitCaption(bit));
            bitOf(static_cast<std::size_t>(i)) = bit;
        }
    } else if (session_.DisplayHex == 1) {
        std::string digits;
        digits.resize(static_cast<std::size_t>(hexDigits(std::max<int>(session_.SPIWordLength, 0))),
                      bit == 0 ? '0' : 'F');
        txtHexWordToSend.setText(digits);
    }
    parts_.commands.deselectQuickCommand();
}

bool SingleWordPage::DoSPISingle() {
    const auto length = static_cast<std::size_t>(std::max<int>(session_.SPIWordLength, 0));
    session_.WordToSend.assign(length, 0);
    if (parts_.log.full()) {
        refuse(fmt::format("The Session Log is full.  Please save or clear the log before "
                           "continuing.{}The SPI word will not be sent.",
                           lineBreak));
        return false;
    }
    if (session_.DisplayHex == 1 && !takeHexEntry("Nothing to send!"))
        return false;
    session_.WordToSend = session_.SingleWordBits;
    requireFit();
    parts_.engine.SendSPI();
    if (showAnswer())
        parts_.log.logWord(parts_.run.continuous());
    return session_.WordAnswered;
}

std::int16_t& SingleWordPage::bitOf(std::size_t index) {
    if (index >= session_.SingleWordBits.size())
        throw pageDoesNotFit(session_);
    return session_.SingleWordBits[index];
}

void SingleWordPage::requireFit() const {
    if (static_cast<int>(session_.SingleWordBits.size()) < session_.SPIWordLength)
        throw pageDoesNotFit(session_);
}

bool SingleWordPage::takeHexEntry(const char* whenEmpty) {
    const std::string& text = txtHexWordToSend.text();
    if (text.empty()) {
        refuse(whenEmpty);
        return false;
    }
    if (!std::all_of(text.begin(), text.end(), [](char c) { return hexDigit(c) >= 0; })) {
        refuse("Not a valid hex number!");
        return false;
    }
    if (!fits(text)) {
        refuse("The word is too long!");
        return false;
    }
    padHexEntry();
    setSingleWordBitsFromHex();
    return true;
}

bool SingleWordPage::fits(const std::string& text) {
    // Summed from the right in a double, so that beyond 53 significant bits the test is
    // approximate. Zeros add nothing, not even where the power is beyond a double.
    double sum = 0;
    for (std::size_t n = 0; n < text.size(); ++n) {
        const int digit = hexDigit(text[text.size() - 1 - n]);
        if (digit != 0)
            sum += digit * std::pow(16.0, static_cast<double>(n));
    }
    return sum < std::pow(2.0, session_.SPIWordLength);
}

void SingleWordPage::padHexEntry() {
    const int digits = hexDigits(session_.SPIWordLength);
    txtHexWordToSend.setText(fmt::format("{:0>{}}", txtHexWordToSend.text(), std::max(digits, 0)));
}

void SingleWordPage::setSingleWordBitsFromHex() {
    const std::string& text = txtHexWordToSend.text();
    const auto length = static_cast<std::size_t>(std::max<int>(session_.SPIWordLength, 0));
    for (std::size_t i = 0; i < std::min(length, 4 * text.size()); ++i) {
        const int digit = hexDigit(text[text.size() - 1 - i / 4]);
        bitOf(i) = static_cast<std::int16_t>((digit >> (i % 4)) & 1);
    }
}

bool SingleWordPage::showAnswer() {
    const WordBits received = session_.WordReceived;
    const bool answered = session_.WordAnswered;
    if (session_.DisplayHex == 0) {
        const int shown = std::min(static_cast<int>(received.size()), bitColumns);
        for (int i = 0; i < shown; ++i)
            lblSO_single(i).setCaption(answered ? bitCaption(received[static_cast<std::size_t>(i)])
                                                : noBit);
    } else if (session_.DisplayHex == 1) {
        std::string text = hexText(received);
        if (!answered)
            text.assign(text.size(), noBit.front());
        lblHexWordReceived.setCaption(text);
    } else {
        refuse("Problem!  This program couldn't figure out whether to use hex or binary.");
        return false;
    }
    return true;
}

void SingleWordPage::refuse(const std::string& text) {
    parts_.boxes.show({.text = text});
    parts_.run.cmdStopContinuous_Click();
}

} // namespace bitlux
