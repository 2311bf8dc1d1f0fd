#include "engine_rig.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(ConvertPin, GivesTheBitInTheRegisterOfThePin) {
    const std::pair<const char*, int> cases[] = {
        {"1", 0},  {"2", 0},  {"3", 1},  {"4", 2},  {"5", 3},  {"6", 4},  {"7", 5},
        {"8", 6},  {"9", 7},  {"10", 6}, {"11", 7}, {"12", 5}, {"13", 4}, {"14", 1},
        {"15", 3}, {"16", 2}, {"17", 3}, {"18", 0}, {"", 0},   {"0", 0},  {"1x", 0}};
    for (const auto& [pin, bit] : cases)
        EXPECT_EQ(ConvertPin(pin), bit) << '"' << pin << '"';
}

TEST(PinLayer, SendsTheWholeShadow) {
    EngineRig rig(1, ConstOn, {1});
    for (int bit = 0; bit < 8; ++bit)
        rig.session.DataPortPins.setLevel(bit, ConstHigh);
    for (int bit = 0; bit < 4; ++bit)
        rig.session.ControlPortPins.setLevel(bit, ConstHigh);
    rig.pins.ToggleDataPort();
    rig.pins.ToggleControlPort();
    rig.session.ControlPortPins.setLevel(1, ConstLow);
    rig.pins.ToggleControlPort();
    rig.pins.ToggleControlPort();
    EXPECT_EQ(rig.port.log, "FF 37A:0F 37A:0D 37A:0D");
}

TEST(PinLayer, RestsTheClockAtTheIdleLevelOfTheType) {
    const char* const expected[] = {"01", "01", "05", "05", "01", "01", "05", "05"};
    for (int type = 1; type <= 8; ++type) {
        EngineRig rig(type, ConstOn, {1});
        rig.pins.rest();
        EXPECT_EQ(rig.port.log, expected[type - 1]) << "type " << type;
    }
}

TEST(PortPins, KeepsToItsRegister) {
    PortPins<4> pins;
    EXPECT_THROW(pins.setLevel(4, 1), std::out_of_range);
    EXPECT_THROW(pins.setLevel(-1, 1), std::out_of_range);
    EXPECT_THROW(pins.setName(4, "Reset"), std::out_of_range);
    pins.setValue(0xFF);
    EXPECT_EQ(pins.value(), 0x0F);
}

TEST(WireTrace, RecordsTimeSinceTheFirstAccess) {
    VirtualClock clock;
    clock.spend(5'000'000);
    EngineRig rig(6, ConstOn, {1});
    rig.port.answer = [&clock](int) {
        clock.spend(1100);
        return 0x20;
    };
    WireTrace trace;
    rig.pins.startRecording(trace, clock);
    rig.engine.SendSPI();
    rig.pins.stopRecording();
    rig.engine.SendSPI(); // not recorded
    std::vector<std::string> lines;
    for (const WireAccess& access : trace.accesses())
        lines.push_back(trace.line(access));
    EXPECT_EQ(lines, (std::vector<std::string>{"0 W 378 00", "1100 R 379 20", "1100 W 378 06",
                                               "1100 W 378 02", "1100 W 378 01"}));
    EXPECT_EQ(&rig.pins.port(), &rig.port);
}

TEST(WireTrace, RecordsInFastModeToo) {
    VirtualClock clock;
    EngineRig rig(6, ConstOn, {1});
    WireTrace trace;
    rig.pins.startRecording(trace, clock);
    rig.pins.port().SetFastMode(1);
    rig.pins.ToggleDataPort();
    rig.pins.stopRecording();
    EXPECT_EQ(trace.accesses().size(), 1U);
    EXPECT_EQ(rig.port.GetFastMode(), 1);
    EXPECT_EQ(rig.port.log, "enable(378,378) 01 disable(378,378)");
}

} // namespace
} // namespace bitlux::test
