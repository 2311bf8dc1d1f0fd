#include "usb_link.h"

#include <cerrno>

namespace bitlux::test {

namespace {

constexpr UsbFrame word{0xA5, 0xC3, 0, 0, 0, 0, 0, 16};

class UsbTransferTest : public UsbTest {
protected:
    UsbTransferTest() { EXPECT_EQ(link.open(), UsbStatus::Success); }

    EmulatedDongle dongle{testbed, list};
    UsbLink link{host};
};

TEST_F(UsbTransferTest, CarriesAWordWithOneTransferEachWay) {
    EXPECT_EQ(dongle.submitted(0x81), 3);
    EXPECT_EQ(dongle.waiting(), 3);
    constexpr int words = 20;
    for (int i = 1; i <= words; ++i) {
        link.expectEcho({static_cast<std::uint8_t>(i), 0xFF, 0, 1, 2, 3, 4, 5});
        EXPECT_EQ(dongle.submitted(0x02), i);
        EXPECT_EQ(dongle.submitted(0x81), 3 + i);
        EXPECT_EQ(dongle.waiting(), 3);
    }
    EXPECT_EQ(dongle.frames().size(), std::size_t{words});
    EXPECT_EQ(dongle.frames().front(), (UsbFrame{1, 0xFF, 0, 1, 2, 3, 4, 5}));
}

TEST_F(UsbTransferTest, TellsWhatComesBackForAFrame) {
    const std::vector<std::uint8_t> bytes(word.begin(), word.end());
    const Rows<const char*, std::vector<Packet>, std::vector<UsbStatus>> cases{
        {"echo", {{bytes}}, {UsbStatus::Success}},
        {"silent", {}, {}},
        {"short", {{{1, 2, 3}}}, {UsbStatus::NoFrame}},
        {"long", {{std::vector<std::uint8_t>(12, 0xEE)}}, {UsbStatus::NoFrame}},
        {"empty", {{}}, {UsbStatus::NoFrame}},
        {"stalled", {{{}, EPIPE}}, {UsbStatus::Failed}},
        {"stalled once", {{{}, EPIPE}, {bytes}}, {UsbStatus::Failed, UsbStatus::Success}},
        {"disturbed", {{{}, EPROTO}, {{}, EILSEQ}, {bytes}}, {UsbStatus::Success}},
        {"disturbed for long",
         {{{}, EPROTO}, {{}, EPROTO}, {{}, EPROTO}, {{}, EPROTO}, {{}, EPROTO}, {bytes}},
         {UsbStatus::Failed, UsbStatus::Success}},
        {"twice", {{bytes}, {bytes}}, {UsbStatus::Success, UsbStatus::Success}},
    };
    for (const auto& [what, packets, statuses] : cases) {
        SCOPED_TRACE(what);
        dongle.answerWith([all = packets](const UsbFrame&) { return all; });
        EXPECT_EQ(link.writer->write(word), UsbStatus::Success);
        for (const UsbStatus status : statuses) {
            UsbFrame frame{};
            EXPECT_EQ(link.reader->read(frame, enough), status);
            EXPECT_EQ(frame, status == UsbStatus::Success ? word : UsbFrame{});
        }
        EXPECT_EQ(link.read(0), UsbStatus::NothingRead);
        EXPECT_EQ(dongle.waiting(), 3);
    }
}

TEST_F(UsbTransferTest, TellsAtEveryReadOfAPipeThatStallsForGood) {
    dongle.stallForGood();
    const int cleared = dongle.count(USBDEVFS_CLEAR_HALT);
    for (int reads = 1; reads <= 2; ++reads) {
        EXPECT_EQ(link.read(), UsbStatus::Failed);
        EXPECT_EQ(dongle.count(USBDEVFS_CLEAR_HALT), cleared + reads);
    }
}

TEST_F(UsbTransferTest, ReportsAFrameThatWasNotTakenToTheNextRead) {
    dongle.stallNextFrame();
    EXPECT_EQ(link.writer->write(word), UsbStatus::Success);
    EXPECT_EQ(link.read(), UsbStatus::Failed);
    EXPECT_EQ(dongle.frames().size(), 0U);
    link.expectEcho();
}

TEST_F(UsbTransferTest, SleepsUntilTheAnswerComes) {
    dongle.answerWith([](const UsbFrame&) { return std::vector<Packet>{}; });
    EXPECT_EQ(link.writer->write(word), UsbStatus::Success);
    for (const std::int64_t wait : {1, 0, -1})
        EXPECT_EQ(link.read(wait), UsbStatus::NothingRead) << wait;
    const int polls = PolledNode::polls();
    const int waits = PolledNode::waits();
    PolledNode::whenWaiting([this] { dongle.send({{word.begin(), word.end()}}); });
    UsbFrame frame{};
    EXPECT_EQ(link.reader->read(frame, enough), UsbStatus::Success);
    EXPECT_EQ(frame, word);
    EXPECT_GE(PolledNode::waits() - waits, 1000) << "it asks for the whole time at once";
    EXPECT_LE(PolledNode::polls() - polls, 10);
}

TEST_F(UsbTransferTest, DrainsWhatHasComeWithoutWaiting) {
    for (std::uint8_t i = 1; i <= 5; ++i)
        dongle.send({{i, 0, 0, 0, 0, 0, 0, 0}});
    for (std::uint8_t i = 1; i <= 5; ++i) {
        UsbFrame frame{};
        EXPECT_EQ(link.reader->read(frame, 0), UsbStatus::Success);
        EXPECT_EQ(frame[0], i) << "in the order of arrival";
    }
    EXPECT_EQ(link.read(0), UsbStatus::NothingRead);
}

TEST_F(UsbTransferTest, SaysThatTheDeviceVanishedInTheMiddleOfAWord) {
    dongle.answerWith([](const UsbFrame&) { return std::vector<Packet>{{{}, ESHUTDOWN}}; });
    EXPECT_EQ(link.writer->write(word), UsbStatus::Success);
    EXPECT_EQ(link.read(), UsbStatus::Gone);
    EXPECT_EQ(link.read(), UsbStatus::Gone);
    EXPECT_EQ(link.writer->write(word), UsbStatus::Gone);
    EXPECT_EQ(link.writer->resetDevice(), UsbStatus::Gone);
    EXPECT_EQ(link.reader->enumerate(dongleClass), 0);
}

TEST_F(UsbTransferTest, ResettingThrowsAwayWhatWasUnderWay) {
    dongle.send({{1, 2, 3, 4, 5, 6, 7, 8}});
    EXPECT_EQ(link.writer->write(word), UsbStatus::Success);
    EXPECT_EQ(link.writer->resetDevice(), UsbStatus::Success);
    EXPECT_EQ(dongle.count(USBDEVFS_RESET), 1);
    EXPECT_TRUE(dongle.isHeld());
    EXPECT_EQ(link.read(), UsbStatus::NotSetUp);
    EXPECT_EQ(link.writer->write(word), UsbStatus::NotSetUp);
    EXPECT_EQ(link.start(), UsbStatus::Success);
    EXPECT_EQ(link.read(0), UsbStatus::NothingRead);
    link.expectEcho();
}

TEST_F(UsbTransferTest, IsGoneWhenAResetBringsBackAnotherDevice) {
    dongle.refuse(USBDEVFS_RESET, ENODEV);
    EXPECT_EQ(link.reader->resetDevice(), UsbStatus::Gone);
    EXPECT_EQ(link.writer->write(word), UsbStatus::Gone);
}

TEST_F(UsbTransferTest, ClosesWithTransfersUnderWay) {
    dongle.refuse(USBDEVFS_DISCARDURB, EINVAL); // as of one that ends already
    PolledNode::whenWaiting([this] {
        for (int i = 0; i < 3; ++i)
            dongle.send({{1, 2, 3, 4, 5, 6, 7, 8}});
    });
    link.reader->close();
    dongle.refuse(0, 0);
    EXPECT_TRUE(dongle.isHeld()) << "the other endpoint holds it still";
    link.writer->close();
    EXPECT_FALSE(dongle.isHeld());
    EXPECT_EQ(dongle.waiting(), 0);
    EXPECT_EQ(link.open(), UsbStatus::Success);
    link.reader.reset();
    link.writer.reset();
    EXPECT_FALSE(dongle.isHeld());
}

TEST_F(UsbTransferTest, ClosesADeviceThatIsGone) {
    EXPECT_EQ(link.writer->write(word), UsbStatus::Success);
    dongle.unplug();
}

TEST_F(UsbTransferTest, KeepsABufferThatNeverComesBackUntilTheDeviceIsClosed) {
    dongle.refuse(USBDEVFS_DISCARDURB, EINVAL);
    EXPECT_EQ(link.reader->stopReading(), UsbStatus::Success);
    dongle.refuse(0, 0);
    for (int i = 0; i < 2; ++i)
        dongle.send({{1, 2, 3, 4, 5, 6, 7, 8}});
    EXPECT_EQ(link.writer->write(word), UsbStatus::Success);
    EXPECT_EQ(link.reader->startReading(threeFrames), UsbStatus::Success);
    EXPECT_EQ(link.read(0), UsbStatus::NothingRead) << "buffers left behind took them";
}

TEST_F(UsbTransferTest, ChoosesNothingAnewThatIsChosen) {
    EXPECT_EQ(link.writer->addInterface(0, 0), UsbStatus::Success);
    EXPECT_EQ(link.writer->setConfiguration(0), UsbStatus::Success);
    EXPECT_EQ(dongle.count(USBDEVFS_SETCONFIGURATION), 0);
    EXPECT_EQ(dongle.count(USBDEVFS_SETINTERFACE), 1);
    EXPECT_EQ(dongle.count(USBDEVFS_CLAIMINTERFACE), 1);
    link.expectEcho();
}

TEST_F(UsbTransferTest, RefusesCallsOutOfOrder) {
    using enum UsbStatus;
    UsbEndpoint& e = *link.reader;
    UsbFrame frame{};
    const auto steps = [&e] {
        return std::vector{e.addInterface(0, 0), e.setConfiguration(0), e.bind(0x81),
                           e.startReading(threeFrames)};
    };
    EXPECT_EQ(e.startWriting(threeFrames), NotSetUp) << "on the pipe for reading";
    EXPECT_EQ(e.write(word), NotSetUp);
    EXPECT_EQ(e.stopReading(), Success);
    EXPECT_EQ(e.read(frame, 0), NotSetUp);
    EXPECT_EQ(
        (std::vector{e.startReading({.size = 9, .count = 3, .errorsAllowed = 5}), e.bind(0x83),
                     e.setConfiguration(1), e.addInterface(1, 0), e.addInterface(0, 7)}),
        std::vector(5, Failed));
    EXPECT_EQ(e.leaveConfiguration(), Success);
    EXPECT_EQ(e.bind(0x81), NotSetUp);
    EXPECT_EQ(steps(), std::vector(4, Success));
    EXPECT_EQ(e.removeInterface(), Success);
    EXPECT_EQ((std::vector{e.removeInterface(), e.setConfiguration(0), e.bind(0x81)}),
              std::vector(3, NotSetUp));
    e.close();
    EXPECT_EQ(steps(), std::vector(4, NotSetUp));
    EXPECT_EQ((std::vector{e.resetDevice(), e.open(1), e.open(-1)}), std::vector(3, NotSetUp));
    EXPECT_EQ(e.open(0), Success);
    EXPECT_EQ(e.setConfiguration(0), NotSetUp);
}

} // namespace

} // namespace bitlux::test
