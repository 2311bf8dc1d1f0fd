#include "transfer/dongle_frame.h"

#include "platform/failure.h"
#include "support/rows.h"

#include <functional>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

/// A session with a word given as its bits, the highest element first, everything else as it is
/// after start-up.
Session sessionWith(const std::string& bits) {
    Session session;
    session.SPIWordLength = static_cast<std::int16_t>(bits.size());
    for (const char bit : bits)
        session.WordToSend.insert(session.WordToSend.begin(), static_cast<std::int16_t>(bit - '0'));
    session.WordReceived.assign(bits.size(), 0);
    return session;
}

std::string frameOf(Session& session) {
    try {
        return fmt::format("{:02X}", fmt::join(buildWordFrame(session), " "));
    } catch (const Failure& failure) {
        return failure.kind() == Failure::Kind::Overflow ? "overflow" : "out of range";
    }
}

const std::string a5c3 = "1010010111000011";

TEST(DongleFrame, HasEverythingInItsPlace) {
    const Rows<const char*, std::string, std::function<void(Session&)>, const char*> cases{
        {"as after start-up", a5c3, [](Session&) {}, "10 70 00 A5 C3 00 00 00"},
        {"LSB first", a5c3, [](Session& s) { s.MSBFirst = ConstOff; }, "10 70 00 C3 A5 00 00 00"},
        {"type 8", a5c3, [](Session& s) { s.SPIType = 8; }, "10 77 00 A5 C3 00 00 00"},
        {"CS high", a5c3, [](Session& s) { s.CSAssertLevel = 1; }, "10 78 00 A5 C3 00 00 00"},
        {"DI low", a5c3, [](Session& s) { s.DIOneLevel = 0; }, "10 60 00 A5 C3 00 00 00"},
        {"DO low", a5c3, [](Session& s) { s.DOHighValue = 0; }, "10 50 00 A5 C3 00 00 00"},
        {"4 MHz", a5c3, [](Session& s) { s.SPIBaudRate = 0; }, "10 30 00 A5 C3 00 00 00"},
        {"500 kHz", a5c3, [](Session& s) { s.SPIBaudRate = 128; }, "10 B0 00 A5 C3 00 00 00"},
        {"62.5 kHz", a5c3, [](Session& s) { s.SPIBaudRate = 192; }, "10 F0 00 A5 C3 00 00 00"},
        {"pins that changed", a5c3,
         [](Session& s) {
             s.USBPinUpdate = 1;
             s.USBExtraPins0 = 0x93;
         },
         "50 70 93 A5 C3 00 00 00"},
        {"the ninth pin", a5c3, [](Session& s) { s.USBExtraPins1 = 1; }, "90 70 00 A5 C3 00 00 00"},
        {"top bit", a5c3, [](Session& s) { s.USBFrameTopBit = true; }, "90 70 00 A5 C3 00 00 00"},
        {"top bit and ninth pin", a5c3,
         [](Session& s) {
             s.USBFrameTopBit = true;
             s.USBExtraPins1 = 1;
         },
         "overflow"},
        {"firmware update", a5c3,
         [](Session& s) {
             s.FirmwareUpdateRequest = true;
             s.SPIType = 3;
         },
         "10 77 00 A5 C3 00 00 00"},
        {"40 bits", "10101010" + a5c3 + a5c3, [](Session&) {}, "28 70 00 AA A5 C3 A5 C3"},
        {"40 bits with a panel's byte", "10101010" + a5c3 + a5c3,
         [](Session& s) {
             s.ZT72537PanelActive = 1;
             s.ZT72537FrameByte7 = 0x5A;
         },
         "28 70 00 AA A5 C3 A5 5A"},
        {"whole bytes in elements 8 and 0", a5c3,
         [](Session& s) { s.WordToSend = {0x34, 0, 0, 0, 0, 0, 0, 0, 0xFE, 0, 0, 0, 0, 0, 0, 0}; },
         "10 70 00 FE 34 00 00 00"},
        {"an element whose shifts leave 16 bits", a5c3, [](Session& s) { s.WordToSend[15] = 256; },
         "overflow"},
    };
    for (const auto& [what, bits, set, frame] : cases) {
        Session session = sessionWith(bits);
        set(session);
        EXPECT_EQ(frameOf(session), frame) << what;
        EXPECT_FALSE(session.FirmwareUpdateRequest) << what;
    }
}

TEST(DongleFrame, HasTheTopBitOnce) {
    Session session = sessionWith(a5c3);
    session.USBFrameTopBit = true;
    EXPECT_EQ(frameOf(session), "90 70 00 A5 C3 00 00 00");
    EXPECT_EQ(frameOf(session), "10 70 00 A5 C3 00 00 00");
    // The sum fails before the flag is cleared.
    session.USBFrameTopBit = true;
    session.USBExtraPins1 = 1;
    EXPECT_EQ(frameOf(session), "overflow");
    EXPECT_TRUE(session.USBFrameTopBit);
}

TEST(DongleFrame, TakesWholeBytes) {
    // Data bytes by word length, "!" where a byte needs more bits than the word has. What has no
    // byte of its own is not sent.
    const std::string bytes[] = {"0000", "!!!1", "111!", "!!!2", "2222", "!!!3",
                                 "333!", "!!!4", "4444", "!!!5", "555!", "!!!!"};
    int length = 1;
    for (const std::string& four : bytes)
        for (const char expected : four) {
            for (const Flag order : {ConstOn, ConstOff}) {
                Session session = sessionWith(std::string(static_cast<std::size_t>(length), '1'));
                session.MSBFirst = order;
                std::string frame = fmt::format("{:02X} 70 00", length);
                for (int byte = 0; byte < 5; ++byte)
                    frame += byte < expected - '0' ? " FF" : " 00";
                EXPECT_EQ(frameOf(session), expected == '!' ? "out of range" : frame) << length;
            }
            ++length;
        }
    EXPECT_EQ(length, 49);
}

TEST(DongleFrame, ComesBackIntoTheElementsThatWereSent) {
    Session session = sessionWith(a5c3 + a5c3 + "00000000");
    unpackAnswer({0xFF, 0xFF, 0xFF, 0x80, 0x00, 0x00, 0x00, 0x03}, session);
    std::vector<std::int16_t> expected(40, 0);
    expected[39] = expected[1] = expected[0] = 1;
    EXPECT_EQ(session.WordReceived, expected);
    session.MSBFirst = ConstOff;
    unpackAnswer({0, 0, 0, 0x80, 0x00, 0x00, 0x00, 0x03}, session);
    expected.assign(40, 0);
    expected[0] = expected[38] = expected[39] = 1;
    EXPECT_EQ(session.WordReceived, expected);
}

} // namespace

} // namespace bitlux::test
