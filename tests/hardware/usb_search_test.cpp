#include "ordinary_user.h"
#include "usb_link.h"

#include <filesystem>
#include <optional>
#include <set>
#include <utility>

#include <sys/stat.h>

namespace bitlux::test {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view storageInterface = "\x09\x04\x00\x00\x02\x08\x06\x50\x00"sv;

std::string descriptors(std::string_view interface, std::uint8_t usbMinor) {
    std::string device(deviceDescriptor);
    device[2] = static_cast<char>(usbMinor);
    return device + configuration(1, {interface, bulkIn, bulkOut});
}

class UsbSearchTest : public UsbTest {
protected:
    void forgetNumbers() { files.write("dongles.conf", "# none\n"); }
    int found() { return endpoint->enumerate(dongleClass); }

    std::unique_ptr<UsbEndpoint> endpoint = host.makeEndpoint();
    /// Of a device that says that it is a dongle.
    const OsAnswers answers{.properties = version1(property1(one)), .set = {}};
};

TEST_F(UsbSearchTest, KnowsADongleByItsNumbersWithoutOpeningIt) {
    EXPECT_EQ(found(), 0);
    EmulatedDongle dongle(testbed, list);
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(dongle.requests(), 0);
    dongle.unplug();
    EXPECT_EQ(found(), 0);
}

TEST_F(UsbSearchTest, KnowsADongleByTheClassItNames) {
    const Property another{"DeviceInterfaceGUID\0"s, "{00000000-0000-0000-0000-000000000001}"};
    const Rows<const char*, std::uint8_t, OsAnswers, int> cases{
        {"version 1.0", 0x00, {.properties = version1(property1(one)), .set = {}}, 1},
        {"version 2.0", 0x01, {.properties = {}, .set = version2(property2(one))}, 1},
        {"both",
         0x01,
         {.properties = version1(property1(one)), .set = version2(property2(one))},
         1},
        {"another class", 0x01, {.properties = {}, .set = version2(property2(another))}, 0},
        {"none", 0x01, {.osString = {}, .properties = {}, .capabilities = {}, .set = {}}, 0},
    };
    forgetNumbers();
    int address = 4;
    for (const auto& [what, usbMinor, answer, count] : cases) {
        SCOPED_TRACE(what);
        EmulatedDongle dongle(testbed, list,
                              {.descriptors = descriptors(vendorInterface, usbMinor),
                               .address = address++,
                               .control = answer.ask()});
        EXPECT_EQ(found(), count);
        const int requests = dongle.requests();
        EXPECT_EQ(found(), count);
        EXPECT_EQ(dongle.requests(), requests) << "asked once only";
        EXPECT_EQ(dongle.count(USBDEVFS_CLAIMINTERFACE), 0);
    }
}

TEST_F(UsbSearchTest, LeavesAMemoryStickAlone) {
    EmulatedDongle stick(testbed, list, {.descriptors = descriptors(storageInterface, 0x00)});
    EXPECT_EQ(found() + stick.requests(), 0);
    EXPECT_EQ(endpoint->open(0), UsbStatus::NotSetUp);
}

TEST_F(UsbSearchTest, TellsSeveralApart) {
    EmulatedDongle second(testbed, list, {.address = 7});
    EmulatedDongle first(testbed, list, {.address = 5});
    EXPECT_EQ(found(), 2);
    EXPECT_EQ(endpoint->open(1), UsbStatus::Success);
    EXPECT_FALSE(first.isHeld());
    EXPECT_TRUE(second.isHeld());
}

TEST_F(UsbSearchTest, FindsTheOneWithASerialNumberAndAsksNoOther) {
    forgetNumbers();
    const auto plugged = [&](int address, const std::string& serial) {
        return DongleKind{.address = address, .serial = serial, .control = answers.ask()};
    };
    EmulatedDongle nameless(testbed, list, plugged(5, ""));
    EmulatedDongle first(testbed, list, plugged(6, "A-1"));
    EmulatedDongle second(testbed, list, plugged(7, "A-2"));
    LinuxUsbHost chosen(places, "A-2");
    UsbLink link(chosen);
    EXPECT_EQ(link.open(), UsbStatus::Success);
    EXPECT_TRUE(second.isHeld());
    EXPECT_EQ(first.requests() + nameless.requests(), 0);
    LinuxUsbHost missing(places, "A-");
    EXPECT_EQ(missing.makeEndpoint()->enumerate(dongleClass), 0);
}

TEST_F(UsbSearchTest, KeepsOtherProgramsOut) {
    EmulatedDongle dongle(testbed, list, {.serial = "A-17"});
    UsbLink link(host);
    EXPECT_EQ(link.open(), UsbStatus::Success);
    TemporaryFolder processes;
    processes.write("97/comm", "bitlux-forge\n");
    fs::create_directories(processes.path("97/fd"));
    fs::create_symlink("/dev/bus/usb/001/004", processes.path("97/fd/7"));
    places.processes = processes.path();
    LinuxUsbHost otherProgram(places);
    UsbLink otherLink(otherProgram);
    EXPECT_EQ(otherLink.open(), UsbStatus::Busy);
    EXPECT_EQ(otherProgram.refusal(), "The dongle A-17 is in use by bitlux-forge (process 97).");
    fs::remove(processes.path("97/fd/7"));
    EXPECT_EQ(otherProgram.refusal(),
              "The dongle A-17 is in use by a program that you may not see.");
    link.expectEcho();
    link.reader->close();
    EXPECT_EQ(otherLink.open(), UsbStatus::Busy);
    link.writer->close();
    EXPECT_EQ(otherLink.open(), UsbStatus::Success);
    EXPECT_EQ(otherProgram.refusal(), "");
}

TEST_F(UsbSearchTest, CarriesWordsOnInterruptPipes) {
    EmulatedDongle dongle(
        testbed, list,
        {.descriptors = join(
             {deviceDescriptor, configuration(1, {vendorInterface, interruptIn, interruptOut})})});
    UsbLink link(host);
    EXPECT_EQ(link.open(), UsbStatus::Success);
    link.expectEcho();
    EXPECT_EQ(dongle.typesUsed(), (std::set<int>{USBDEVFS_URB_TYPE_INTERRUPT}));
}

TEST_F(UsbSearchTest, FindsADongleThatIsPluggedInAgain) {
    std::optional<EmulatedDongle> dongle(std::in_place, testbed, list);
    UsbLink link(host);
    EXPECT_EQ(link.open(), UsbStatus::Success);
    for (const int address : {5, 5}) { // the second time the number is used again
        dongle->unplug();
        EXPECT_EQ(link.read(), UsbStatus::Gone);
        dongle.emplace(testbed, list, DongleKind{.address = address});
        UsbLink second(host);
        EXPECT_EQ(second.open(), UsbStatus::Success);
        second.expectEcho();
        EXPECT_EQ(link.read(), UsbStatus::Gone) << "what was opened stays gone";
        second.reader->close();
        second.writer->close();
        EXPECT_EQ(link.open(), UsbStatus::Success);
        link.expectEcho();
    }
}

TEST_F(UsbSearchTest, AsksAnewWhatIsPluggedInAgain) {
    forgetNumbers();
    {
        EmulatedDongle stranger(testbed, list);
        EXPECT_EQ(found(), 0);
    }
    EXPECT_EQ(found(), 0);
    EmulatedDongle dongle(testbed, list, {.control = answers.ask()});
    EXPECT_EQ(found(), 1);
}

TEST_F(UsbSearchTest, AsksAgainWhatCouldNotBeAsked) {
    forgetNumbers();
    plugIn(list, "1-4", 4, dongleDescriptors());
    EXPECT_EQ(found(), 0) << "its node is not there yet";
    const EmulatedDongle dongle(testbed, list, {.control = answers.ask()});
    EXPECT_EQ(found(), 1);
}

TEST_F(UsbSearchTest, AsksAgainWhatIsSlowToAnswer) {
    forgetNumbers();
    const EmulatedDongle dongle(testbed, list, {.control = answers.ask(), .unanswered = 1});
    EXPECT_EQ(found(), 0) << "it has just been plugged in";
    EXPECT_EQ(found(), 1);
}

TEST_F(UsbSearchTest, SaysThatADongleMayNotBeOpened) {
    plugIn(list, "1-4", 4, dongleDescriptors());
    places.nodes = files.path();
    ASSERT_EQ(::chmod(files.write("001/004", "").c_str(), 0), 0);
    const OrdinaryUser user;
    LinuxUsbHost here(places);
    endpoint = here.makeEndpoint();
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(endpoint->open(0), UsbStatus::NoRights);
}

TEST_F(UsbSearchTest, TellsADongleThatGoesBeforeItIsOpened) {
    EmulatedDongle dongle(testbed, list);
    EXPECT_EQ(found(), 1);
    dongle.unplug();
    EXPECT_EQ(endpoint->open(0), UsbStatus::Gone);
}

} // namespace

} // namespace bitlux::test
