#include "bench/device.h"
#include "bench/dongle_word.h"
#include "bench/model/chip_model.h"
#include "bench/simulated_dongle.h"
#include "chips/chip_reader.h"
#include "platform/failure.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A chip from a text, with words of up to 64 bits clocked through its pins.
class ModelRig {
public:
    explicit ModelRig(const std::string& text, const std::string& device = "made")
        : chip_(makeChipModel(read(text), device)) {}

    static chips::ChipPtr read(const std::string& text) {
        const chips::ChipFile file = chips::readChip(text, "made.toml");
        for (const chips::Problem& problem : file.problems)
            ADD_FAILURE() << describe(problem, "made.toml");
        return file.chip;
    }
    std::uint64_t send(std::uint64_t word, int bits) {
        const BusShape shape{.wordLength = bits};
        std::uint64_t answer = 0;
        DeviceInputs lines{.chipSelect = true};
        const auto drive = [&] { chip_->inputsChanged(lines, shape); };
        drive();
        lines.chipSelect = false;
        drive();
        for (int bit = bits - 1; bit >= 0; --bit) {
            lines.dataIn = (word >> bit & 1) != 0;
            drive();
            answer = answer << 1 | (chip_->dataOut() ? 1 : 0);
            for (const bool level : {true, false}) {
                lines.clock = level;
                drive();
            }
        }
        lines.chipSelect = true;
        drive();
        return answer;
    }
    void turn(const std::string& name, bool on = true) {
        chip_->turn(switchNamed(*chip_, name), on);
    }
    std::string switches() const {
        std::string all;
        for (const ChipSwitch& one : chip_->switches())
            all += one.group + "/" + one.name + " ";
        return all;
    }
    std::string readings() const {
        std::string all;
        for (const Reading& one : chip_->readings())
            all += one.name + "=" + one.value + " ";
        return all;
    }

private:
    std::unique_ptr<Chip> chip_;
};

/// A word of 16 bits: write, flags, three bits of address, three of status, eight of data.
const std::string accessChip = R"(
[chip]
title = "Made up"
[word]
bits = 16
address = "13:11"
data = "7:0"
write = 0x8000
read = 0x0000
flags = 0x4000
[word.status]
bits = ["-", "-", "-", "-", "-", "-", "-", "-", "HOT", "LOW", "-", "-", "-", "-", "-", "-"]
of_read = "9:8"
sum = [{ bit = 15, of = 'Supply_Latched(0)' }]
[[register]]
title = "Control"
address = 0
width = 8
reset = 0x5A
[[register]]
title = "Sensor"
address = 1
width = 8
reset = 0xC3
access = "read only"
[[register]]
title = "Key"
address = 2
width = 8
access = "write only"
write = { reply = "Sensor" }
[[register]]
title = "Events"
address = 3
bits = ["Start", "-", " Start "]
reset = 0x05
access = "read clears"
[[register]]
title = "Pending"
address = 4
width = 8
reset = 0xFF
access = "write one clears"
[[register]]
title = "Slow"
address = 5
width = 8
reset = 0x61
never_written = 0xE0
[[register]]
title = "Fast"
address = 5
width = 8
always_written = 0x80
view = [{ title = "Fast", extra = 0x80, row = "Fast_R" }]
[[register]]
title = "Supply"
address = 6
width = 2
[[register.view]]
[[register.view]]
title = "Supply flags"
reads = "flags"
bits = ["UV", "OV"]
clears = true
[[register.view]]
title = "Latched"
reads = "flags"
extra = 0x80
bits = ["Was UV", "-"]
[[register.view]]
title = "Revision"
address = 7
reset = 0x2
switches = "Identity"
bits = ["Rev 0", "Rev 1"]
)";

TEST(ChipModel, FollowsTheAccessOfEachRegister) {
    ModelRig rig(accessChip);
    const auto exchange = [&rig](const std::vector<std::pair<unsigned, unsigned>>& words) {
        for (const auto& [word, answer] : words)
            EXPECT_EQ(rig.send(word, 16), answer) << std::hex << word;
    };
    exchange({{0x0000, 0x5A}, {0x80A5, 0x00}, {0x0000, 0xA5}});                 // read write
    exchange({{0x0800, 0xC3}, {0x8811, 0x00}, {0x0800, 0xC3}});                 // read only
    exchange({{0x9077, 0xC3}, {0x1000, 0x00}});                                 // write only
    exchange({{0x1800, 0x05}, {0x1800, 0x00}, {0x98FF, 0x00}, {0x1800, 0x00}}); // read clears
    exchange({{0xA00F, 0x00}, {0x2000, 0xF0}, {0xA0F0, 0x00}, {0x2000, 0x00}}); // ones clear
    exchange({{0xA81F, 0x00}, {0x2800, 0x7F}, {0xA8B3, 0x00}});                 // one address
    exchange({{0x2800, 0x7F}, {0x2880, 0xB3}});
    exchange({{0x3880, 0x02}, {0x7800, 0x00}}); // a value of its own, and no flags there
    EXPECT_EQ(rig.readings(), "Last word=7800 Control=A5 Sensor=C3 Key=77 Events=0 Pending=00 "
                              "Slow=7F Fast=B3 Supply=0 ");
    exchange({{0xC000, 0x00}}); // no operation
    EXPECT_EQ(rig.readings().substr(0, 24), "Last word=C000, unknown ");
}

TEST(ChipModel, TurnsOnWhatItTellsByName) {
    ModelRig rig(accessChip);
    EXPECT_EQ(rig.switches().substr(0, 22), "Sensor/0 Sensor/1 Sens");
    EXPECT_NE(rig.switches().find("Events/Start Events/Start 2 Pending/0 "), std::string::npos);
    EXPECT_NE(rig.switches().find("Pending/7 Supply flags/UV Supply flags/OV Latched/Was UV "
                                  "Identity/Rev 0 Identity/Rev 1 Status/HOT Status/LOW "
                                  "Faults/Silent Faults/Output stuck high Faults/Flags stay "),
              std::string::npos)
        << rig.switches();
    rig.turn("ov");
    rig.turn("Was UV");
    rig.turn("LOW");
    rig.turn("Sensor/0", false);
    rig.turn("Rev 0");
    EXPECT_EQ(rig.send(0x7000, 16), 0x0202U);
    EXPECT_EQ(rig.send(0x7000, 16), 0x0200U) << "cleared by reading";
    EXPECT_EQ(rig.send(0x7080, 16), 0x0201U);
    EXPECT_EQ(rig.send(0x7080, 16), 0x0201U) << "not cleared";
    EXPECT_EQ(rig.send(0x0800, 16), 0x02C2U);
    EXPECT_EQ(rig.send(0x3800, 16), 0x0203U);
    EXPECT_EQ(rig.send(0x8000, 16), 0x8200U) << "with the sum of flags";
    rig.turn("UV");
    rig.turn("Flags stay");
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(rig.send(0x7000, 16), 0x0201U);
    rig.turn("Silent");
    EXPECT_EQ(rig.send(0x8042, 16), 0x0000U);
    rig.turn("Silent", false);
    EXPECT_EQ(rig.send(0x0000, 16), 0x0200U) << "a silent chip takes nothing";
    rig.turn("Output stuck high");
    EXPECT_EQ(rig.send(0x0000, 16), 0xFFFFU);
}

TEST(ChipModel, ChecksWordsAndAnswersWithACheck) {
    // Write bit, two bits of address, four of data, odd parity over all of them.
    ModelRig parity(R"(
[chip]
title = "Parity"
[word]
bits = 8
address = "6:5"
data = "4:1"
write = 0x80
check = { kind = "odd parity", over = "7:1", place = "0" }
[[register]]
title = "Level"
address = 1
width = 4
)");
    EXPECT_EQ(parity.send(0xAD, 8), 0x01U);
    EXPECT_EQ(parity.send(0x20, 8), 0x0DU);
    EXPECT_EQ(parity.send(0xAF, 8), 0x01U) << "wrong parity";
    EXPECT_EQ(parity.readings(), "Last word=AF, wrong check Level=6 ");
    EXPECT_EQ(parity.send(0x20, 8), 0x0DU);
    EXPECT_EQ(parity.send(0xAE, 9), 0x002U) << "another length";
    EXPECT_EQ(parity.send(0x20, 8), 0x0DU);

    // 24 bits: write bit, seven of address, eight of data, CRC-8 with the polynomial 0x07.
    ModelRig crc(R"(
[chip]
title = "CRC"
[word]
bits = 24
address = "22:16"
data = "15:8"
write = 0x800000
check = { kind = "crc", over = "23:8", place = "7:0", polynomial = 0x07 }
[[register]]
title = "Level"
address = 0x12
width = 8
)");
    EXPECT_EQ(crc.send(0x92A5B9, 24), 0x000000U);
    EXPECT_EQ(crc.send(0x12007D, 24), 0x00A572U);
    EXPECT_EQ(crc.send(0x9277BB, 24), 0x000000U);
    EXPECT_EQ(crc.send(0x12007F, 24), 0x00A572U) << "answered, but the write was not taken";
}

TEST(ChipModel, AnswersWithTheNextWord) {
    ModelRig rig(R"(
[chip]
title = "Late"
[word]
bits = 16
address = "14:12"
data = "11:0"
write = 0x8000
answer = "next word"
[word.status]
of_read = "15"
bits = ["-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "Fault"]
[[register]]
title = "Level"
address = 1
width = 12
reset = 0x123
[[register]]
title = "Events"
address = 2
width = 12
access = "read clears"
reset = 0x800
)");
    const std::pair<unsigned, unsigned> words[] = {{0x1000, 0x0000}, {0x2000, 0x0123},
                                                   {0x2000, 0x0800}, {0x9ABC, 0x0000},
                                                   {0x1000, 0x0000}, {0x0000, 0x0ABC}};
    for (const auto& [word, answer] : words)
        EXPECT_EQ(rig.send(word, 16), answer) << std::hex << word;
    rig.send(0x1000, 16);
    rig.turn("Fault");
    EXPECT_EQ(rig.send(0x1000, 8), 0x8AU) << "the answer of a word that is too short";
    EXPECT_EQ(rig.send(0x1000, 16), 0x8ABCU) << "which counts for nothing";
}

TEST(ChipModel, TakesWordsOfSixtyFourBits) {
    ModelRig rig(R"(
[chip]
title = "Wide"
[word]
bits = 64
address = "62:48"
data = "47:0"
write = "0x8000000000000000"
[[register]]
title = "Wide"
address = 0x7FFF
width = 48
)");
    EXPECT_EQ(rig.send(0xFFFF'FEDC'BA98'7654, 64), 0U);
    EXPECT_EQ(rig.send(0x7FFF'0000'0000'0000, 64), 0x0000'FEDC'BA98'7654U);
}

TEST(ChipModel, HasTheDevicesOfItsFile) {
    const std::string text = R"(
[chip]
title = "Family"
[word]
bits = 8
address = "6:5"
data = "3:0"
write = 0x80
[[register]]
title = "Number"
address = 1
width = 4
access = "read only"
[[device]]
name = "small"
[[device]]
name = "large"
reset = { register = "Number", value = 0x9 }
)";
    EXPECT_EQ(ModelRig(text, "small").send(0x20, 8), 0x00U);
    EXPECT_EQ(ModelRig(text, "large").send(0x20, 8), 0x09U);
    EXPECT_THROW(makeChipModel(ModelRig::read(text), "medium"), Failure);
    EXPECT_THROW(makeChipModel(ModelRig::read("[chip]\ntitle = \"X\"\nmodel = [\"zt72518\"]\n[word]"
                                              "\nbits = 8\n[[command]]\ntitle = \"Go\"\nword = 1"),
                               "made"),
                 Failure)
        << "the part needs registers that are not there";
    EXPECT_THROW(makeChipModel(ModelRig::read("[chip]\ntitle = \"X\"\nmodel = [\"zt1\"]\n[word]"
                                              "\nbits = 8\n[[command]]\ntitle = \"Go\"\nword = 1"),
                               "made"),
                 Failure);

    struct OneChip : ChipSource {
        chips::ChipPtr chip;
        [[nodiscard]] std::vector<Entry> entries() const override { return {{"large", "a chip"}}; }
        [[nodiscard]] chips::ChipPtr chipOf(std::string_view device) const override {
            return device == "large" ? chip : nullptr;
        }
    } source;
    source.chip = ModelRig::read(text);
    EXPECT_EQ(deviceNames(source).back(), "large");
    EXPECT_EQ(deviceDescription("large", source), "a chip");
    EXPECT_NE(makeDevice("large", {}, source)->chip(), nullptr);
    EXPECT_THROW(makeDevice("zt72518d", {}, source), Failure);
}

/// Counts what happens on the pins of the device behind it.
class CountingDevice : public Device {
public:
    explicit CountingDevice(std::unique_ptr<Device> device) : device_(std::move(device)) {}

    void inputsChanged(const DeviceInputs& inputs, const BusShape& shape) override {
        ++changes;
        device_->inputsChanged(inputs, shape);
    }
    [[nodiscard]] bool dataOut() const override { return device_->dataOut(); }
    Chip* chip() override { return device_->chip(); }
    DongleServices dongleServices() override { return device_->dongleServices(); }

    int changes = 0;

private:
    std::unique_ptr<Device> device_;
};

TEST(ChipModel, IsCaughtUpWithoutEveryRefresh) {
    const UsbFrame resetsOf20{16, 0x31, 0, 0x4A, 0x18};
    const UsbFrame enhanced4{16, 0x31, 0, 0x4C, 0x0C};
    const UsbFrame allowsVddOff{16, 0x31, 0, 0x5E, 0x01};
    const UsbFrame refresh{16, 0x31, 0, 0x5A, 0x00};
    const UsbFrame sleep{16, 0x31, 0, 0x5C, 0x60};
    const UsbFrame pulses{0, 69, 0, 16, 0, 7, 0}; // every 37 ms
    const UsbFrame simple1ms{0, 21, 0, 8, 0};
    const UsbFrame enhanced1ms{0, 21, 0, 11, 0};
    const std::pair<std::vector<UsbFrame>, const char*> cases[] = {
        {{simple1ms}, "Normal"},
        {{enhanced4, enhanced1ms}, "Normal"},
        {{pulses, simple1ms}, "Normal"},
        {{allowsVddOff, refresh, sleep, simple1ms}, "Low Power Vdd Off (Sleep)"},
        {{resetsOf20, enhanced4, simple1ms}, "Reset"}};
    for (const auto& [frames, mode] : cases) {
        VirtualClock clock;
        const auto device = std::make_shared<CountingDevice>(makeDevice("zt72518d"));
        SimulatedDongle dongle(clock, device);
        dongle.setWiring([](int type) {
            return BusShape{.validOnRising = type == 1, .toggledOnRising = type == 2};
        });
        dongle.plug();
        const auto out = dongle.makeEndpoint();
        out->open(0);
        out->bind(0x02);
        out->startWriting({});
        for (const UsbFrame& frame : frames)
            EXPECT_EQ(out->write(frame), UsbStatus::Success);
        device->changes = 0;
        constexpr std::int64_t period = 1'000'000;
        clock.idle(600'000 * period + period / 2);
        dongle.catchUp();
        EXPECT_EQ(device->chip()->readings().front().value, mode);
        EXPECT_LT(device->changes, 100'000) << mode;
        const int jumped = device->changes;
        clock.idle(period);
        dongle.catchUp();
        EXPECT_GT(device->changes, jumped) << "the next refresh comes at its time";
        clock.idle(period / 4);
        const int before = device->changes;
        dongle.catchUp();
        EXPECT_EQ(device->changes, before) << "and no other before";
    }
}

} // namespace
} // namespace bitlux::test
