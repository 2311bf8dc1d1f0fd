#include "support/rows.h"
#include "support/temporary_folder.h"

#include "platform/linux/parport_list.h"

#include <string>

#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

std::string baseFile(int number) {
    return "parport" + std::to_string(number) + "/base-addr";
}

TEST(ParportList, TakesTheFirstNumberOfAPort) {
    const Rows<const char*, int> cases{
        {"888\t1912\n", 0x378},
        {"888\t1912", 0x378},
        {"632\n", 0x278},
        {"956", 0x3BC},
        {"32767\t0\n", 32767},
        {"53264\t53272\n", 0xD010}, // as cards have them
        {"65535\t0\n", 0xFFFF},
        {"65536\t0\n", 0},
        {"4294967296\t0\n", 0},
        {"-888\t0\n", 0},
        {"0\t0\n", 0},
        {"", 0},
        {"\n", 0},
        {"0x378\t0\n", 0},
        {"888x\t0\n", 0},
        {"none\n", 0},
    };
    for (const auto& [content, base] : cases) {
        const TemporaryFolder folder;
        folder.write(baseFile(0), content);
        EXPECT_EQ(ParportList(folder.path()).baseAddress(0), base) << '"' << content << '"';
    }
}

TEST(ParportList, FindsTheOwnerOfAnAddress) {
    const TemporaryFolder folder;
    folder.write(baseFile(0), "888\t1912\n");
    folder.write(baseFile(1), "0\t0\n"); // an adapter without registers
    folder.write(baseFile(2), "53264\t53272\n");
    folder.write(baseFile(3), "632\t1656\n");
    const ParportList list(folder.path());

    const Rows<std::uint16_t, int, int> cases{
        {0x377, -1, 0}, {0x378, 0, 0x378}, {0x379, 0, 0x378}, {0x37A, 0, 0x378},
        {0x37B, -1, 0}, {0x278, 3, 0x278}, {0x27A, 3, 0x278}, {0x3BC, -1, 0},
        {0, -1, 0},     {1, -1, 0},        {0xD00F, -1, 0},   {0xD012, 2, 0xD010},
    };
    for (const auto& [address, number, base] : cases) {
        SCOPED_TRACE(address);
        const auto owner = list.owner(address);
        EXPECT_EQ(owner ? owner->number : -1, number);
        EXPECT_EQ(owner ? owner->baseAddress : 0, base);
    }
}

TEST(ParportList, SeesAPortThatAppearsLater) {
    const TemporaryFolder folder;
    const ParportList list(folder.path("parport"));
    EXPECT_EQ(list.baseAddress(0), 0);
    EXPECT_FALSE(list.owner(0x378));
    folder.write("parport/" + baseFile(0), "888\t1912\n");
    EXPECT_EQ(list.baseAddress(0), 0x378);
}

} // namespace

} // namespace bitlux::test
