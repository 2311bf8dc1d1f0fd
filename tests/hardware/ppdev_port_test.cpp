#include "emulated_parport.h"
#include "failure_text.h"
#include "ordinary_user.h"
#include "support/temporary_folder.h"

#include "platform/linux/ppdev_port.h"

#include <array>
#include <cerrno>
#include <string>
#include <vector>

#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

constexpr const char* node = "/dev/parport0";

class PpdevPortTest : public testing::Test {
protected:
    static unsigned exchangeWord(PpdevPort& port, unsigned word) {
        return exchange(
            word, 4, [&](int offset, std::uint8_t value) { port.write(offset, value); },
            [&](int offset) { return port.read(offset); });
    }

    static std::string openingFailure(const std::string& name = node) {
        return failureText([&] { const PpdevPort port(name); });
    }

    Testbed testbed;
    EmulatedParport parport{testbed, 0};
};

TEST_F(PpdevPortTest, CarriesAWordToTheSlaveAndBack) {
    parport.wires.loadReply(0b0110, 4);
    PpdevPort port(node);
    EXPECT_EQ(exchangeWord(port, 0b1010), 0b0110U);
    EXPECT_EQ(parport.wires.received(), 0b1010U);
    const std::vector<Written> bytes{{0, 0x04}, {0, 0x02}, {0, 0x03}, {0, 0x00}, {0, 0x01},
                                     {0, 0x02}, {0, 0x03}, {0, 0x00}, {0, 0x01}, {0, 0x04}};
    EXPECT_EQ(parport.wires.written(), bytes);
}

TEST_F(PpdevPortTest, ReadsStuckLinesAsTheyAre) {
    PpdevPort port(node);
    for (const unsigned reply : {0b1111U, 0b0000U}) {
        parport.wires.stick(reply != 0 ? 0xFF : 0x00);
        EXPECT_EQ(exchangeWord(port, 0b1010), reply);
    }
}

TEST_F(PpdevPortTest, CarriesEveryLevelOfEveryRegister) {
    PpdevPort port(node);
    for (const int value : {0x00, 0x01, 0x80, 0x0A, 0x55, 0xAA, 0xFF}) {
        SCOPED_TRACE(value);
        const auto byte = static_cast<std::uint8_t>(value);
        port.write(0, byte);
        EXPECT_EQ(port.read(0), byte);
        port.write(2, byte);
        EXPECT_EQ(port.read(2), byte & 0x0F) << "bit 5 would turn the data lines round";
        parport.wires.stick(byte);
        EXPECT_EQ(port.read(1), byte);
    }
}

TEST_F(PpdevPortTest, HoldsThePortExclusivelyUntilItIsDestroyed) {
    {
        PpdevPort port(node);
        EXPECT_TRUE(parport.isHeld());
        expectContains(openingFailure(), "held by another");
        port.write(0, 0x01);
    }
    EXPECT_FALSE(parport.isHeld());
    const std::vector<unsigned long> requests{PPEXCL,  PPCLAIM, PPDATADIR, PPEXCL,
                                              PPCLAIM, PPWDATA, PPRELEASE};
    EXPECT_EQ(parport.requests(), requests);
    PpdevPort again(node);
    again.write(0, 0x02);
    EXPECT_EQ(parport.wires.read(0), 0x02);
}

TEST_F(PpdevPortTest, SaysWhyAPortCannotBeClaimed) {
    struct Case {
        unsigned long request;
        int error;
        const char* fix;
    };
    static constexpr std::array cases{
        Case{PPCLAIM, ENXIO, "rmmod lp"},
        Case{PPCLAIM, EBUSY, "rmmod lp"},
        Case{PPCLAIM, ENOMEM, "cannot be claimed: Cannot allocate memory"},
        Case{PPEXCL, EINVAL, "cannot be claimed: Invalid argument"},
        Case{PPEXCL, ENOTTY, "is no parallel port"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fix);
        parport.break_({.request = c.request, .error = c.error});
        const std::string text = openingFailure();
        expectContains(text, c.fix);
        expectContains(text, node);
    }
    parport.repair();
    EXPECT_NO_THROW(PpdevPort{node}) << "a failed claim must leave nothing behind";
}

TEST_F(PpdevPortTest, SaysThatThePortVanishedInTheMiddleOfAWord) {
    struct Case {
        unsigned long request;
        int error;
        const char* reason;
    };
    static constexpr std::array cases{
        Case{PPWDATA, ENODEV, "No such device"},
        Case{PPWDATA, EIO, "Input/output error"},
        Case{PPRSTATUS, ENODEV, "No such device"},
        Case{PPRSTATUS, EINVAL, "Invalid argument"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        PpdevPort port(node);
        parport.break_({.request = c.request, .error = c.error, .passing = 2});
        const std::string text = failureText([&] { exchangeWord(port, 0b1010); });
        expectContains(text, "lost while in use");
        expectContains(text, c.reason);
    }
}

TEST_F(PpdevPortTest, RepeatsInterruptedRequests) {
    static constexpr std::array<unsigned long, 6> requests{PPEXCL,  PPCLAIM,   PPDATADIR,
                                                           PPWDATA, PPRSTATUS, PPRELEASE};
    for (const unsigned long request : requests) {
        SCOPED_TRACE(request);
        parport.break_({.request = request, .error = EINTR, .times = 2});
        parport.wires.loadReply(0b1001, 4);
        {
            PpdevPort port(node);
            EXPECT_EQ(exchangeWord(port, 0b1100), 0b1001U);
        }
        EXPECT_FALSE(parport.isHeld());
    }
}

TEST_F(PpdevPortTest, SaysWhichGroupMayOpenThePort) {
    const TemporaryFolder folder;
    const std::string name = folder.write("parport0", "");
    ASSERT_EQ(::chmod(name.c_str(), 0), 0);
    const OrdinaryUser user;
    const std::string text = openingFailure(name);
    expectContains(text, "permission");
    expectContains(text, "usermod -a -G lp");
}

TEST_F(PpdevPortTest, SaysWhichDriverBringsTheNode) {
    expectContains(openingFailure("/dev/parport1"), "modprobe ppdev");
}

int nextDescriptor() {
    const int descriptor = ::dup(STDERR_FILENO);
    ::close(descriptor);
    return descriptor;
}

TEST_F(PpdevPortTest, RecognisesAnotherKindOfFileAndClosesIt) {
    const TemporaryFolder folder;
    const std::string file = folder.write("parport0", "");
    const int before = nextDescriptor();
    expectContains(openingFailure(file), "is no parallel port");
    EXPECT_EQ(nextDescriptor(), before);
    expectContains(openingFailure(folder.path()), "cannot be opened: Is a directory");
}

} // namespace

} // namespace bitlux::test
