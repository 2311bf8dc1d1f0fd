#include "support/temporary_folder.h"

#include "platform/linux/parport_list.h"

#include <array>
#include <string>

#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

std::string baseFile(int number) {
    return "parport" + std::to_string(number) + "/base-addr";
}

TEST(ParportList, TakesTheFirstNumberOfAPort) {
    struct Case {
        const char* content;
        int base;
    };
    static constexpr std::array cases{
        Case{"888\t1912\n", 0x378},
        Case{"888\t1912", 0x378},
        Case{"632\n", 0x278},
        Case{"956", 0x3BC},
        Case{"32767\t0\n", 32767},
        Case{"53264\t53272\n", 0xD010}, // as cards have them
        Case{"65535\t0\n", 0xFFFF},
        Case{"65536\t0\n", 0},
        Case{"4294967296\t0\n", 0},
        Case{"-888\t0\n", 0},
        Case{"0\t0\n", 0},
        Case{"", 0},
        Case{"\n", 0},
        Case{"0x378\t0\n", 0},
        Case{"888x\t0\n", 0},
        Case{"none\n", 0},
    };
    for (const Case& c : cases) {
        const TemporaryFolder folder;
        folder.write(baseFile(0), c.content);
        EXPECT_EQ(ParportList(folder.path()).baseAddress(0), c.base) << '"' << c.content << '"';
    }
}

TEST(ParportList, FindsTheOwnerOfAnAddress) {
    const TemporaryFolder folder;
    folder.write(baseFile(0), "888\t1912\n");
    folder.write(baseFile(1), "0\t0\n"); // an adapter without registers
    folder.write(baseFile(2), "53264\t53272\n");
    folder.write(baseFile(3), "632\t1656\n");
    const ParportList list(folder.path());

    struct Case {
        std::uint16_t address;
        int number; // -1: nobody's
        int base;
    };
    static constexpr std::array cases{
        Case{0x377, -1, 0}, Case{0x378, 0, 0x378}, Case{0x379, 0, 0x378}, Case{0x37A, 0, 0x378},
        Case{0x37B, -1, 0}, Case{0x278, 3, 0x278}, Case{0x27A, 3, 0x278}, Case{0x3BC, -1, 0},
        Case{0, -1, 0},     Case{1, -1, 0},        Case{0xD00F, -1, 0},   Case{0xD012, 2, 0xD010},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.address);
        const auto owner = list.owner(c.address);
        EXPECT_EQ(owner ? owner->number : -1, c.number);
        EXPECT_EQ(owner ? owner->baseAddress : 0, c.base);
    }
}

TEST(ParportList, IsEmptyWithoutAFolder) {
    const ParportList list("/nowhere/parport");
    EXPECT_EQ(list.baseAddress(0), 0);
    EXPECT_FALSE(list.owner(0x378));
}

TEST(ParportList, SeesAPortThatAppearsLater) {
    const TemporaryFolder folder;
    const ParportList list(folder.path());
    ASSERT_EQ(list.baseAddress(0), 0);
    folder.write(baseFile(0), "888\t1912\n");
    EXPECT_EQ(list.baseAddress(0), 0x378);
}

} // namespace

} // namespace bitlux::test
