#include "register_chip.h"

#include "registers/word_decoder.h"

#include <tuple>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(WordDecoder, ExplainsWords) {
    const RegisterCatalog catalog = registerCatalog();
    const WordDecoder decoder(catalog);
    const std::vector<std::tuple<std::uint64_t, std::uint64_t, std::string, std::string>> rows{
        {0x8143, 0xA000, "Mode write: Watch it, Time = 0, State = Run = on",
         "status: Ready, Fault"},
        {0x8100, 0x0000, "Stop", ""},
        {0x8250, 0x0000, "Speed write 0x50", ""},
        {0x8210, 0x0000, "", ""}, // without the bit that is always written
        {0x0100, 0x8022, "Mode read", "Time = 0, State = 2; status: Ready"},
        {0x01FF, 0x0000, "Mode read", "Time = 0, State = Off"}, // data of a read do not matter
        {0x4600, 0x0002, "Code state read", "Bad"},
        {0x4700, 0x0000, "", ""},
        {0x1F00, 0x0000, "", ""},
    };
    for (const auto& [word, answer, text, answerText] : rows) {
        const DecodedWord meant = decoder.decode(word);
        EXPECT_EQ(meant.text(), text) << std::hex << word;
        EXPECT_EQ(decoder.answerText(meant, answer), answerText) << std::hex << word;
    }
}

TEST(WordDecoder, DistinguishesRegistersOfOneAddress) {
    const RegisterCatalog catalog(chips::embeddedChip("zt72361"));
    const WordDecoder decoder(catalog);
    EXPECT_EQ(decoder.decode(0xB6).text(), "TIM 1 write: Bit 2 = Enabled, Period = 100 ms");
    EXPECT_EQ(decoder.decode(0xBE).text(), "TIM 2 write: Time = 200 ms");
    EXPECT_EQ(decoder.decode(0xA0).title(), "TIM flags read");
}

TEST(WordDecoder, ShortensLongTexts) {
    const RegisterCatalog catalog(chips::embeddedChip("zt72516"));
    EXPECT_EQ(WordDecoder(catalog).decode(0x43000214).text(),
              "INIT write: SAFEB = Function Disabled (W/D Inhibit Mode), WD2INT = Function "
              "disabled, MCU_OC, OC-TIM (In Low Power VDD On Mode) = No W/D - Vdd over-current has "
              "no effect, WD SAFEb = SAFEb terminal is set low at the time of the RESET terminal "
              "low activation, WD_spi = Enhanced 1, WDN/WIN = Watchdog operation is TIME OUT, W/D "
              "refresh can occur anytime, VDDLrst = Reset at approx 0.9 VDD, VDDrstD = 10ms "
              "[Default], VAUX 3/5 = VAUX = 5V");
}

} // namespace
} // namespace bitlux::test
