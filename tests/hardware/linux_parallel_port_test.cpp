#include "emulated_parport.h"
#include "failure_text.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

#include "platform/chosen_port.h"
#include "platform/linux/linux_parallel_port.h"

#include <cerrno>
#include <string>
#include <vector>

#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

class LinuxParallelPortTest : public testing::Test {
protected:
    LinuxParallelPortTest() {
        list.write("parport0/base-addr", "888\t1912\n");
        list.write("parport1/base-addr", "632\t1656\n");
        list.write("parport3/base-addr", "956\t0\n");
    }

    Testbed testbed;
    EmulatedParport first{testbed, 0};
    EmulatedParport second{testbed, 1};
    TemporaryFolder list;
    LinuxParallelPort port{list.path()};
};

TEST_F(LinuxParallelPortTest, KnowsThreeLptAddresses) {
    const Rows<std::int16_t, int> cases{{1, 0x378}, {2, 0x278}, {3, 0}, {0, 0}, {4, 0}, {-1, 0}};
    for (const auto& [number, address] : cases)
        EXPECT_EQ(port.GetLPTPortAddress(number), address) << "LPT" << number;
    EXPECT_TRUE(port.IsWinNT());
}

TEST_F(LinuxParallelPortTest, MakesOneRequestAnAccess) {
    first.wires.status = 0x48;
    port.Outp(0x378, 0x55);
    EXPECT_EQ(port.Inp(0x379), 0x48);
    port.Outp(0x37A, 0x04);
    EXPECT_EQ(first.requests(), (std::vector<unsigned long>{PPEXCL, PPCLAIM, PPDATADIR, PPWDATA,
                                                            PPRSTATUS, PPWCONTROL}));
}

TEST_F(LinuxParallelPortTest, WritesTheLowByte) {
    for (const int value : {0x1234, 0x00FF, -1, -256}) {
        port.Outp(0x378, static_cast<std::int16_t>(value));
        EXPECT_EQ(port.Inp(0x378), value & 0xFF);
    }
}

TEST_F(LinuxParallelPortTest, HoldsThePortThatWasAccessedLast) {
    EXPECT_FALSE(first.isHeld());
    port.Outp(0x37A, 0x0B);
    EXPECT_EQ(first.wires.written, (std::vector<Written>{{2, 0x0B}}));
    EXPECT_TRUE(first.isHeld());
    port.Outp(0x278, 0x01);
    EXPECT_EQ(second.wires.written, (std::vector<Written>{{0, 0x01}}));
    EXPECT_FALSE(first.isHeld());
    EXPECT_TRUE(second.isHeld());
    port.Outp(0x37A, 0x04);
    EXPECT_EQ(first.wires.written, (std::vector<Written>{{2, 0x0B}, {2, 0x0B}, {2, 0x04}}))
        << "claiming set the control register";
    EXPECT_TRUE(first.isHeld());
    EXPECT_FALSE(second.isHeld());
}

TEST_F(LinuxParallelPortTest, IgnoresWritesToTheStatus) {
    port.Outp(0x379, 0xFF);
    EXPECT_EQ(first.wires.written, std::vector<Written>{});
}

TEST_F(LinuxParallelPortTest, SaysThatNoPortStandsAtAnAddress) {
    for (const int address : {0x37B, 0x377, 0x100, 0, -1}) {
        SCOPED_TRACE(address);
        const std::string text =
            failureText([&] { port.Outp(static_cast<std::int16_t>(address), 0); });
        expectContains(text, "modprobe parport_pc");
    }
    expectContains(failureText([&] { port.Inp(0x37B); }), "0x37B");
}

TEST_F(LinuxParallelPortTest, OpensALostPortAgain) {
    port.Outp(0x378, 0x01);
    first.break_({.request = PPWDATA, .error = ENODEV});
    expectContains(failureText([&] { port.Outp(0x378, 0x02); }), "lost");
    EXPECT_FALSE(first.isHeld());
    first.repair();
    port.Outp(0x378, 0x03);
    EXPECT_EQ(first.wires.data, 0x03);
}

TEST_F(LinuxParallelPortTest, ReachesTheUpperHalfOfTheAddresses) {
    list.write("parport1/base-addr", "53264\t53272\n");
    const std::int16_t base = port.GetLPTPortAddress(2);
    EXPECT_EQ(static_cast<std::uint16_t>(base), 0xD010);
    port.Outp(base, 0x5A);
    port.Outp(static_cast<std::int16_t>(base + 2), 0x0B);
    EXPECT_EQ(second.wires.written, (std::vector<Written>{{0, 0x5A}, {2, 0x0B}}));
    EXPECT_EQ(port.Inp(base), 0x5A);
}

TEST_F(LinuxParallelPortTest, MayHaveOnlyThePortThatWasChosen) {
    for (const char* name : {"lpt2", "LPT2", "0x278", "632"}) {
        SCOPED_TRACE(name);
        ChosenPort chosen(port, portChoiceFrom(name));
        chosen.demand();
        EXPECT_EQ(chosen.GetLPTPortAddress(1), 0);
        EXPECT_EQ(chosen.GetLPTPortAddress(2), 0x278);
        chosen.Outp(0x27A, 0x04);
        EXPECT_EQ(chosen.Inp(0x27A), 0x04);
        for (const int address : {0x277, 0x27B, 0x378})
            expectContains(failureText([&] { chosen.Outp(static_cast<std::int16_t>(address), 0); }),
                           "was chosen");
    }
    EXPECT_EQ(first.requests().size(), 0U);
    for (const char* name : {"lpt3", "0x3BC", "0xD010"})
        expectContains(failureText([&] { ChosenPort(port, portChoiceFrom(name)).demand(); }),
                       "there is LPT1 at 0x378, LPT2 at 0x278.");
    for (const char* name : {"", "lpt0", "lpt4", "lpt", "lpt22", "0x", "0x10000", "-1", "1x", "0"})
        EXPECT_THROW(portChoiceFrom(name), Failure) << name;
}

TEST_F(LinuxParallelPortTest, NoticesAPortThatWasTakenAway) {
    port.complete();
    port.Outp(0x378, 0x01);
    port.complete();
    first.takeAway();
    port.Outp(0x378, 0x02); // the driver goes on accepting everything
    expectContains(failureText([&] { port.complete(); }), "/dev/parport0 was lost while in use");
    EXPECT_FALSE(first.isHeld());
    expectContains(failureText([&] { port.Outp(0x378, 0x03); }), "modprobe ppdev");
    first.bringBack();
    port.Outp(0x378, 0x04);
    port.complete();
    EXPECT_EQ(first.wires.data, 0x04);
}

TEST_F(LinuxParallelPortTest, LooksForNodesInItsDeviceFolder) {
    LinuxParallelPort elsewhere(list.path(), "/dev/nowhere");
    expectContains(failureText([&] { elsewhere.Inp(0x379); }), "/dev/nowhere/parport0");
}

} // namespace

} // namespace bitlux::test
