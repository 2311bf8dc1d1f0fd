#include "emulated_parport.h"
#include "failure_text.h"
#include "ordinary_user.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

#include "platform/linux/ppdev_port.h"

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
    static std::string openingFailure(const std::string& name = node) {
        return failureText([&] { const PpdevPort port(name); });
    }

    Testbed testbed;
    EmulatedParport parport{testbed, 0};
};

TEST_F(PpdevPortTest, CarriesEveryLevelOfEveryRegister) {
    PpdevPort port(node);
    for (const int value : {0x00, 0x01, 0x80, 0x0A, 0x55, 0xAA, 0xFF}) {
        SCOPED_TRACE(value);
        const auto byte = static_cast<std::uint8_t>(value);
        port.write(0, byte);
        EXPECT_EQ(port.read(0), byte);
        port.write(2, byte);
        EXPECT_EQ(port.read(2), byte & 0x0F) << "bit 5 would turn the data lines round";
        parport.wires.status = byte;
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
    EXPECT_EQ(parport.wires.data, 0x02);
}

TEST_F(PpdevPortTest, SaysWhyAPortCannotBeClaimed) {
    const Rows<unsigned long, int, const char*> cases{
        {PPCLAIM, ENXIO, "rmmod lp"},
        {PPCLAIM, EBUSY, "rmmod lp"},
        {PPCLAIM, ENOMEM, "cannot be claimed: Cannot allocate memory"},
        {PPEXCL, EINVAL, "cannot be claimed: Invalid argument"},
        {PPEXCL, ENOTTY, "is no parallel port"},
    };
    for (const auto& [request, error, fix] : cases) {
        SCOPED_TRACE(fix);
        parport.break_({.request = request, .error = error});
        const std::string text = openingFailure();
        expectContains(text, fix);
        expectContains(text, node);
    }
    parport.repair();
    EXPECT_NO_THROW(PpdevPort{node}) << "a failed claim must leave nothing behind";
}

TEST_F(PpdevPortTest, SaysThatThePortVanishedInTheMiddleOfAWord) {
    const Rows<unsigned long, int, const char*> cases{
        {PPWDATA, ENODEV, "No such device"},
        {PPWDATA, EIO, "Input/output error"},
        {PPRSTATUS, ENODEV, "No such device"},
        {PPRSTATUS, EINVAL, "Invalid argument"},
    };
    for (const auto& [request, error, reason] : cases) {
        SCOPED_TRACE(reason);
        PpdevPort port(node);
        parport.break_({.request = request, .error = error, .passing = 2});
        const std::string text = failureText([&port] {
            for (int access = 0; access < 3; ++access) {
                port.write(0, 0x01);
                port.read(1);
            }
        });
        expectContains(text, "lost while in use");
        expectContains(text, reason);
    }
}

TEST_F(PpdevPortTest, RepeatsInterruptedRequests) {
    for (const unsigned long request :
         std::vector<unsigned long>{PPEXCL, PPCLAIM, PPDATADIR, PPWDATA, PPRSTATUS, PPRELEASE}) {
        SCOPED_TRACE(request);
        parport.break_({.request = request, .error = EINTR, .times = 2});
        parport.wires = {.status = 0x48};
        {
            PpdevPort port(node);
            port.write(0, 0x55);
            EXPECT_EQ(port.read(1), 0x48);
        }
        EXPECT_EQ(parport.wires.written, (std::vector<Written>{{0, 0x55}}));
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
