#include "bench/model/chip_model.h"
#include "chips/chip_reader.h"
#include "dongle_rig.h"
#include "platform/failure.h"
#include "support/rows.h"

#include <string>

namespace bitlux::test {
namespace {

/// A chip from a text, with words of up to 64 bits clocked through its pins.
class ModelRig : public ChipScript {
public:
    ModelRig(const std::string& text, int bits, const std::string& device = "made")
        : chip_(makeChipModel(read(text), device)), bits_(bits) {}

    static chips::ChipPtr read(const std::string& text) {
        const chips::ChipFile file = chips::readChip(text, "made.toml");
        for (const chips::Problem& problem : file.problems)
            ADD_FAILURE() << describe(problem, "made.toml");
        return file.chip;
    }
    std::uint64_t send(std::uint64_t word) override { return send(word, bits_); }
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
    Chip& present() override { return *chip_; }
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
    int bits_;
};

/// A word of 16 bits: write, flags, three bits of address, three of status, eight of data.
const std::string accessChip = R"(
chip = { title = "Made up" }
register = [
  { title = "Control", address = 0, width = 8, reset = 0x5A },
  { title = "Sensor", address = 1, width = 8, reset = 0xC3, access = "read only" },
  { title = "Key", address = 2, width = 8, access = "write only", write = { reply = "Sensor" } },
  { title = "Events", address = 3, reset = 0x05, access = "read clears", bits = [
    "Start", "-", " Start " ] },
  { title = "Pending", address = 4, width = 8, reset = 0xFF, access = "write one clears" },
  { title = "Slow", address = 5, width = 8, reset = 0x61, never_written = 0xE0 },
  { title = "Fast", address = 5, width = 8, always_written = 0x80, view = [
    { title = "Fast", extra = 0x80, row = "Fast_R" } ] },
  { title = "Supply", address = 6, width = 2, view = [
    {},
    { title = "Supply flags", reads = "flags", bits = ["UV", "OV"], clears = true },
    { title = "Latched", reads = "flags", extra = 0x80, bits = ["Was UV", "-"] },
    { title = "Revision", address = 7, reset = 0x2, switches = "Identity", bits = [
      "Rev 0", "Rev 1" ] },
  ] },
]
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
)";

TEST(ChipModel, FollowsTheAccessOfEachRegister) {
    ModelRig rig(accessChip, 16);
    rig.play("0000=5A 80A5=00 0000=A5");                 // read write
    rig.play("0800=C3 8811=00 0800=C3");                 // read only
    rig.play("9077=C3 1000=00");                         // write only
    rig.play("1800=05 1800=00 98FF=00 1800=00");         // read clears
    rig.play("A00F=00 2000=F0 A0F0=00 2000=00");         // ones clear
    rig.play("A81F=00 2800=7F A8B3=00 2800=7F 2880=B3"); // one address
    rig.play("3880=02 7800=00");                         // a value of its own, and no flags there
    EXPECT_EQ(rig.readings(), "Last word=7800 Control=A5 Sensor=C3 Key=77 Events=0 Pending=00 "
                              "Slow=7F Fast=B3 Supply=0 ");
    rig.play("C000=00 Last_word>C000,_unknown"); // no operation
}

TEST(ChipModel, TurnsOnItsSwitchesByName) {
    ModelRig rig(accessChip, 16);
    EXPECT_EQ(rig.switches().substr(0, 22), "Sensor/0 Sensor/1 Sens");
    EXPECT_NE(rig.switches().find("Events/Start Events/Start 2 Pending/0 "), std::string::npos);
    EXPECT_NE(rig.switches().find("Pending/7 Supply flags/UV Supply flags/OV Latched/Was UV "
                                  "Identity/Rev 0 Identity/Rev 1 Status/HOT Status/LOW "
                                  "Faults/Silent Faults/Output stuck high Faults/Flags stay "),
              std::string::npos)
        << rig.switches();
    EXPECT_EQ(rig.present().switches().at(switchNamed(rig.present(), "ov")).name, "OV");
    rig.play("!OV !Was_UV !LOW !-Sensor/0 !Rev_0");
    rig.play("7000=0202 7000=0200"); // cleared by reading
    rig.play("7080=0201 7080=0201"); // not cleared
    rig.play("0800=02C2 3800=0203");
    rig.play("8000=8200"); // with the sum of flags
    rig.play("!UV !Flags_stay 7000=0201 7000=0201");
    rig.play("!Silent 8042=0000 !-Silent 0000=0200"); // a silent chip takes nothing
    rig.play("!Output_stuck_high 0000=FFFF");
}

TEST(ChipModel, ChecksWordsAndAnswersWithACheck) {
    // Write bit, two bits of address, four of data, odd parity over all of them.
    const std::string parityChip = R"(
chip = { title = "Parity" }
register = [{ title = "Level", address = 1, width = 4 }]
[word]
bits = 8
address = "6:5"
data = "4:1"
write = 0x80
check = { kind = "odd parity", over = "7:1", place = "0" }
)";
    ModelRig parity(parityChip, 8);
    parity.play("AD=01 20=0D AF=01 Last_word>AF,_wrong_check Level>6 20=0D");
    EXPECT_EQ(parity.send(0xAE, 9), 0x002U) << "another length";
    parity.play("20=0D");

    // 24 bits: write bit, seven of address, eight of data, CRC-8 with the polynomial 0x07.
    ModelRig crc(R"(
chip = { title = "CRC" }
register = [{ title = "Level", address = 0x12, width = 8 }]
[word]
bits = 24
address = "22:16"
data = "15:8"
write = 0x800000
check = { kind = "crc", over = "23:8", place = "7:0", polynomial = 0x07 }
)",
                 24);
    ;
    // The second write has a wrong check: it is answered, but not taken.
    crc.play("92A5B9=000000 12007D=00A572 9277BB=000000 12007F=00A572");
}

TEST(ChipModel, AnswersWithTheNextWord) {
    ModelRig rig(R"(
chip = { title = "Late" }
register = [
  { title = "Level", address = 1, width = 12, reset = 0x123 },
  { title = "Events", address = 2, width = 12, access = "read clears", reset = 0x800 },
]
[word]
bits = 16
address = "14:12"
data = "11:0"
write = 0x8000
answer = "next word"
[word.status]
of_read = "15"
bits = ["-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "Fault"]
)",
                 16);
    ;
    rig.play("1000=0000 2000=0123 2000=0800 9ABC=0000 1000=0000 0000=0ABC 1000 !Fault");
    EXPECT_EQ(rig.send(0x1000, 8), 0x8AU) << "the answer of a word that is too short";
    EXPECT_EQ(rig.send(0x1000, 16), 0x8ABCU) << "which has no effect";
}

TEST(ChipModel, TakesWordsOfSixtyFourBits) {
    ModelRig rig(R"(
chip = { title = "Wide" }
word = { bits = 64, address = "62:48", data = "47:0", write = "0x8000000000000000" }
register = [{ title = "Wide", address = 0x7FFF, width = 48 }]
)",
                 64);
    ;
    rig.play("FFFFFEDCBA987654=0 7FFF000000000000=0000FEDCBA987654");
}

TEST(ChipModel, HasTheDevicesOfItsFile) {
    const std::string text = R"(
chip = { title = "Family" }
word = { bits = 8, address = "6:5", data = "3:0", write = 0x80 }
register = [{ title = "Number", address = 1, width = 4, access = "read only" }]
device = [
  { name = "small" },
  { name = "large", reset = { register = "Number", value = 0x9 } },
]
)";
    ModelRig(text, 8, "small").play("20=00");
    ModelRig(text, 8, "large").play("20=09");
    EXPECT_THROW(makeChipModel(ModelRig::read(text), "medium"), Failure);
    for (const char* part : {"zt72518", "zt1"}) { // needs other registers; does not exist
        const auto chip =
            ModelRig::read(fmt::format("[chip]\ntitle = \"X\"\nmodel = [\"{}\"]\n[word]\nbits = 8\n"
                                       "[[command]]\ntitle = \"Go\"\nword = 1",
                                       part));
        EXPECT_THROW(makeChipModel(chip, "made"), Failure) << part;
    }

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
    // The watchdog is served every millisecond, by a simple word or an enhanced one.
    for (const char* steps :
         {"<0015000800> @600000 Mode>Normal", "4C0C <0015000B00> @600000 Mode>Normal",
          "<00450010000700> <0015000800> @600000 Mode>Normal", // pulses every 37 ms
          "5E01 5A00 5C60 <0015000800> @600000 Mode>Low_Power_Vdd_Off_(Sleep)",
          "4A18 4C0C <0015000800> @600000 Mode>Reset"}) { // resets of 20 ms
        const auto device = std::make_shared<CountingDevice>(makeDevice("zt72518d"));
        DongleRig rig(device, 16, 2);
        rig.play(steps);
        EXPECT_LT(device->changes, 100'000) << steps;
        int busy = 0; // quarters of a period with the next refresh, and no other
        for (int quarter = 0; quarter < 4; ++quarter) {
            const int before = device->changes;
            rig.clock.idle(millisecond / 4);
            rig.dongle.catchUp();
            busy += device->changes > before ? 1 : 0;
        }
        EXPECT_EQ(busy, 1) << steps;
    }
}

} // namespace
} // namespace bitlux::test
