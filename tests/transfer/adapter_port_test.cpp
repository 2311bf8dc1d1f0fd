// Words and pins on an adapter: the bytes that leave for it, and what becomes of its samples.

#include "engine_rig.h"

#include "transfer/adapter_bus.h"

#include <random>
#include <sstream>

#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Adapters that write down what is asked of them, and sample what they are told.
struct LoggingAdapters : AdapterHost {
    struct Link : AdapterLink {
        explicit Link(LoggingAdapters& owner) : host(owner) {}
        ~Link() override { host.note("close"); }
        void drive(std::uint8_t outputs) override {
            host.note(fmt::format("drive {:02X}", outputs));
        }
        void exchange(std::span<const std::uint8_t> bytes,
                      std::span<std::uint8_t> samples) override {
            if (host.isLost)
                throw Failure(Failure::Kind::PortUnusable, "The adapter is gone");
            host.note(fmt::format("{:02X}", fmt::join(bytes, " ")));
            for (std::size_t i = 0; i < samples.size(); ++i)
                samples[i] = host.sample(i);
        }
        [[nodiscard]] double rate() const override { return 500'000; }

        LoggingAdapters& host;
    };

    std::vector<Adapter> find() override { return adapters; }
    std::unique_ptr<AdapterLink> open(const Adapter& adapter) override {
        note("open " + adapter.place);
        return std::make_unique<Link>(*this);
    }
    void note(const std::string& what) { log += (log.empty() ? "" : ", ") + what; }
    std::string takeLog() { return std::exchange(log, {}); }

    std::vector<Adapter> adapters{
        {.type = "FT232R", .serial = "A1", .place = "1-1"},
        {.type = "FT232H", .serial = "", .place = "1-2"},
    };
    std::string log;
    std::function<std::uint8_t(std::size_t)> sample = [](std::size_t) { return std::uint8_t{0}; };
    bool isLost = false;
};

/// The engine with an adapter in use.
struct AdapterRig : EngineRig {
    using EngineRig::EngineRig;

    void use(std::size_t number = 0) {
        bus.search();
        bus.use(bus.found().at(number));
        pins.rest();
    }
    std::string send() {
        adapters.takeLog();
        engine.SendSPI();
        return adapters.takeLog();
    }

    LoggingAdapters adapters;
    AdapterBus bus{session, pins, &adapters};
};

std::vector<std::int16_t> bitsOf(unsigned value, std::size_t length) {
    std::vector<std::int16_t> bits(length);
    for (std::size_t i = 0; i < length; ++i)
        bits[i] = static_cast<std::int16_t>(value >> i & 1U);
    return bits;
}

TEST(AdapterPort, SendsAWordAsTheseBytes) {
    // Chip select on D3, data in on D1, clock on D0.
    const Rows<int, Flag, std::string> rows{
        {1, ConstOn, "00, 02 03 00 01 02 03 02 03 00 08"},
        {1, ConstOff, "00, 02 03 02 03 00 01 02 03 00 08"},
        {2, ConstOn, "00, 03 02 01 00 03 02 03 02 08"},
        {5, ConstOn, "00, 01 02 00 01 02 03 02 03 08"},
        {7, ConstOn, "01, 00 03 02 01 00 03 02 03 02 0A 09"},
    };
    for (const auto& [type, order, bytes] : rows) {
        AdapterRig rig(type, order, bitsOf(0b1011, 4));
        rig.use();
        std::string expected = bytes;
        expected.erase(expected.find(','), 1);
        EXPECT_EQ(rig.send(), expected) << type;
    }
}

/// The port's trace says what must leave for the adapter, and which samples count.
struct Trace {
    explicit Trace(const std::string& log) {
        std::istringstream accesses(log);
        for (std::string access; accesses >> access;)
            if (access == "R379")
                writesBeforeRead.push_back(bytes.size());
            else
                bytes.push_back(lines(static_cast<unsigned>(std::stoul(access, nullptr, 16))));
    }

    /// Pins 2, 3, 4 are D3, D1, D0; 5 to 8 are D4 to D7.
    static unsigned lines(unsigned data) {
        return (data & 1U) << 3 | (data & 2U) | (data >> 2 & 1U) | (data >> 3 & 0xFU) << 4;
    }

    std::vector<unsigned> bytes;
    std::vector<std::size_t> writesBeforeRead;
};

void setPolarities(Session& session, int which) {
    const auto level = [](bool high) { return static_cast<std::int16_t>(high ? 1 : 0); };
    session.CSAssertLevel = level((which & 1) != 0);
    session.CSIdleLevel = level((which & 1) == 0);
    session.DIOneLevel = level((which & 2) != 0);
    session.DIZeroLevel = level((which & 2) == 0);
    session.DOHighValue = level((which & 4) != 0);
    session.DOLowValue = level((which & 4) == 0);
}

TEST(AdapterPort, MakesTheAccessesOfThePortInOneExchange) {
    std::mt19937 random(20261122);
    int words = 0;
    for (int type = 1; type <= 8; ++type)
        for (const Flag order : {ConstOn, ConstOff})
            for (const std::size_t length : {1U, 2U, 8U, 31U, 40U, 64U, 127U, 160U}) {
                std::vector<std::int16_t> word(length);
                for (auto& bit : word)
                    bit = static_cast<std::int16_t>(random() & 1U);
                std::vector<std::uint8_t> samples(2 * length + 8);
                for (auto& sample : samples)
                    sample = static_cast<std::uint8_t>(random());

                EngineRig port(type, order, word);
                setPolarities(port.session, words);
                port.pins.rest();
                port.port.log.clear();
                const Trace trace(port.send());
                port.port.answer = [&, first = static_cast<int>(length)](int read) {
                    const std::size_t at =
                        trace.writesBeforeRead.at(static_cast<std::size_t>(read - first));
                    return (samples.at(at) & 4) != 0 ? 0x20 : 0; // D2 is pin 12
                };
                port.send();

                AdapterRig rig(type, order, word);
                setPolarities(rig.session, words);
                rig.use();
                rig.adapters.sample = [&](std::size_t at) { return samples.at(at); };
                const std::string where =
                    fmt::format("type {}, MSB first {}, {} bits, polarities {}", type,
                                order.value(), length, words & 7);
                ASSERT_EQ(rig.send(), fmt::format("{:02X}", fmt::join(trace.bytes, " "))) << where;
                ASSERT_EQ(rig.session.WordReceived, port.session.WordReceived) << where;
                ++words;
            }
    EXPECT_EQ(words, 128);
}

TEST(AdapterPort, DrivesTheLinesOfPinsInUseOnceTheyHaveALevel) {
    AdapterRig rig(4, ConstOn, bitsOf(1, 1));
    rig.use();
    EXPECT_EQ(rig.adapters.takeLog(), "open 1-1, 09, drive 0B, 09");
    nameDataPin(rig.session, 6, "Reset");
    setPortPins(rig.session, "Reset", true);
    rig.pins.ToggleDataPort();
    EXPECT_EQ(rig.adapters.takeLog(), "09, drive 8B, 89");
    nameControlPin(rig.session, 0, "Lamp"); // no line has its pin
    rig.pins.ToggleControlPort();
    EXPECT_EQ(rig.adapters.takeLog(), "");
    rig.bus.leave();
    EXPECT_EQ(rig.adapters.takeLog(), "close");
    EXPECT_EQ(rig.session.AdapterInUse, "");
    rig.pins.ToggleDataPort();
    EXPECT_EQ(rig.port.log, "45");
}

TEST(AdapterPort, HasTheWiringOfItsOwner) {
    AdapterRig rig(1, ConstOn, bitsOf(0b10, 2));
    AdapterWiring& wiring = rig.adapters.adapters[1].wiring;
    wiring = {};
    const Rows<int, int> pins{{2, 7}, {3, 6}, {4, 5}, {12, 0}, {1, 1}, {11, 2}};
    for (const auto& [pin, line] : pins)
        EXPECT_TRUE(wiring.connect(pin, line)) << pin;
    EXPECT_FALSE(wiring.connect(16, 7)); // taken
    EXPECT_FALSE(wiring.connect(18, 3));
    EXPECT_EQ(wiring.pinsText(), "1 to 4, 11 and 12");
    nameControlPin(rig.session, 0, "Lamp"); // low, with a one in the register
    rig.session.DOPin = 7;                  // pin 11, inverted by the hardware of a port
    rig.use(1);
    rig.pins.ToggleControlPort();
    EXPECT_EQ(rig.adapters.takeLog(), "open 1-2, 82, drive E2, 82, 80");
    rig.adapters.sample = [](std::size_t at) { return std::uint8_t(at < 4 ? 0x04 : 0x01); };
    EXPECT_EQ(rig.send(), "00 40 60 00 20 00 80");
    EXPECT_EQ(rig.session.WordReceived, (std::vector<std::int16_t>{1, 0}));
}

TEST(AdapterPort, OpensALostAdapterAgainWhereItIsThen) {
    AdapterRig rig(1, ConstOn, bitsOf(1, 1));
    rig.use();
    rig.adapters.isLost = true;
    EXPECT_EQ(rig.send(), "close");
    EXPECT_EQ(rig.boxes.shown().back().text, "The adapter is gone");
    EXPECT_TRUE(rig.session.LinkFailed);
    EXPECT_FALSE(rig.session.WordAnswered);
    EXPECT_FALSE(rig.bus.inUse()->isOpen());

    const std::vector<Adapter> unplugged = std::exchange(rig.adapters.adapters, {});
    rig.send();
    EXPECT_EQ(rig.boxes.shown().back().text,
              "The adapter FT232R A1 is not plugged in. Plug it in, then try again.");

    rig.adapters.adapters = unplugged;
    rig.adapters.adapters[0].place = "3-4";
    rig.adapters.isLost = false;
    EXPECT_EQ(rig.send(), "open 3-4, 08, drive 0B, 00 02 03 00 08");
    EXPECT_TRUE(rig.session.WordAnswered);
    EXPECT_EQ(rig.session.AdapterClock, 500'000);
}

TEST(AdapterPort, IsRecordedAsThePortAtItsOwnPace) {
    AdapterRig rig(1, ConstOn, bitsOf(1, 1));
    rig.use();
    WireTrace trace;
    rig.pins.startRecording(trace, rig.clock);
    rig.adapters.sample = [](std::size_t) { return std::uint8_t{0x04}; };
    rig.send();
    std::string lines;
    for (const WireAccess& access : trace.accesses())
        lines += trace.line(access) + "\n";
    EXPECT_EQ(lines, "0 W 378 00\n"
                     "2000 W 378 02\n"
                     "4000 W 378 06\n"
                     "5999 R 379 20\n"
                     "6000 W 378 00\n"
                     "8000 W 378 01\n");
    trace.clear();
    rig.adapters.isLost = true;
    rig.send();
    EXPECT_TRUE(trace.accesses().empty());
    rig.bus.leave();
    rig.pins.ToggleDataPort(); // on the port of the machine, recorded as before
    EXPECT_EQ(trace.accesses().size(), 1U);
}

} // namespace
} // namespace bitlux::test
