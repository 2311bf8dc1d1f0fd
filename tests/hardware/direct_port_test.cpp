#include "failure_text.h"
#include "trapped_ports.h"

#include "platform/linux/direct_port.h"

#include <array>
#include <cerrno>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

constexpr std::int16_t base = TrappedPorts::base;

class DirectPortTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(ports.open(), std::vector<int>{});
        EXPECT_EQ(ports.trespassed(), std::vector<int>{});
    }

    void write(int offset, std::uint8_t value) {
        const auto address = static_cast<std::int16_t>(base + offset);
        port.enable(address, address);
        port.write(address, value);
        port.disable(address, address);
    }

    TrappedPorts ports;
    DirectPort port;
};

TEST_F(DirectPortTest, CarriesAWordToTheSlaveAndBack) {
    ports.wires.loadReply(0b0110, 4);
    const unsigned reply = exchange(
        0b1010, 4, [&](int offset, std::uint8_t value) { write(offset, value); },
        [&](int offset) { return port.read(static_cast<std::int16_t>(base + offset)); });
    EXPECT_EQ(reply, 0b0110U);
    const std::vector<Written> bytes{{0, 0x04}, {0, 0x02}, {0, 0x03}, {0, 0x00}, {0, 0x01},
                                     {0, 0x02}, {0, 0x03}, {0, 0x00}, {0, 0x01}, {0, 0x04}};
    EXPECT_EQ(ports.wires.written(), bytes);
}

TEST_F(DirectPortTest, ReachesEveryRegisterWithTheWholeByte) {
    for (const int value : {0x00, 0x01, 0x80, 0x0A, 0xFF}) {
        const auto byte = static_cast<std::uint8_t>(value);
        write(0, byte);
        write(2, static_cast<std::uint8_t>(~byte));
        EXPECT_EQ(port.read(base), byte);
        EXPECT_EQ(port.read(base + 2), static_cast<std::uint8_t>(~byte));
    }
}

TEST_F(DirectPortTest, OpensOnlyWhatItIsTold) {
    port.enable(base, base + 2);
    EXPECT_EQ(ports.open(), (std::vector{0x378, 0x379, 0x37A}));
    port.disable(base, base + 2);
    port.enable(base + 2, base + 2);
    EXPECT_EQ(ports.open(), (std::vector{0x37A}));
    port.disable(base + 2, base + 2);
}

TEST_F(DirectPortTest, OpensAPortThatIsClosedForOneAccess) {
    port.write(base, 0x5A);
    EXPECT_EQ(port.read(base), 0x5A);
    EXPECT_EQ(ports.open(), std::vector<int>{});
}

TEST_F(DirectPortTest, ReadingLeavesAnOpenPortOpen) {
    port.enable(base, base);
    port.read(base);
    EXPECT_EQ(ports.open(), (std::vector{0x378}));
    port.disable(base, base);
}

TEST_F(DirectPortTest, ReachesTheUpperHalfOfTheAddresses) {
    port.enable(-1, -1);
    EXPECT_EQ(ports.open(), (std::vector{0xFFFF}));
    EXPECT_EQ(port.read(-1), 0xFF);
    port.disable(-1, -1);
}

TEST_F(DirectPortTest, SaysWhyAccessIsNotGranted) {
    struct Case {
        int error;
        const char* reason;
    };
    static constexpr std::array cases{
        Case{EPERM, "CAP_SYS_RAWIO"},
        Case{ENOSYS, "This kernel has no direct port access"},
        Case{ENOMEM, "Cannot allocate memory"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        ports.refuse(c.error);
        expectContains(failureText([&] { port.enable(base, base); }), c.reason);
        expectContains(failureText([&] { port.read(base); }), c.reason);
        expectContains(failureText([&] { port.write(base, 0); }), c.reason);
    }
    EXPECT_EQ(ports.wires.written(), std::vector<Written>{});
}

} // namespace

} // namespace bitlux::test
