#include "support/rows.h"
#include "support/usb_descriptors.h"

#include "platform/linux/usb_devices.h"

#include <array>
#include <filesystem>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr std::string_view storageInterface = "\x09\x04\x00\x00\x02\x08\x06\x50\x00"sv;
constexpr std::string_view otherSetting = "\x09\x04\x00\x01\x02\xff\x00\x00\x00"sv;
constexpr std::string_view emptySetting = "\x09\x04\x00\x00\x00\xff\x00\x00\x00"sv;
constexpr std::string_view secondVendorInterface = "\x09\x04\x01\x00\x02\xff\x00\x00\x00"sv;
constexpr std::string_view secondKeyboard = "\x09\x04\x01\x00\x01\x03\x01\x01\x00"sv;
constexpr std::string_view keyboardIn = "\x07\x05\x83\x03\x08\x00\x0a"sv;
constexpr std::string_view isochronousIn = "\x07\x05\x81\x01\x08\x00\x0a"sv;
constexpr std::string_view otherIn = "\x07\x05\x82\x02\x40\x00\x00"sv;
constexpr std::string_view otherOut = "\x07\x05\x01\x02\x40\x00\x00"sv;
constexpr std::string_view unknown = "\x05\x30\x01\x02\x03"sv;
constexpr std::string_view longEndpointIn = "\x09\x05\x81\x02\x40\x00\x00\x00\x00"sv;
constexpr std::string_view shortInterface = "\x08\x04\x00\x00\x02\xff\x00\x00"sv;
constexpr std::string_view shortEndpoint = "\x06\x05\x02\x02\x40\x00"sv;
constexpr std::string_view noLength = "\x00\x05\x02\x02\x40\x00\x00"sv;
constexpr std::string_view tooLong = "\x08\x05\x02\x02\x40\x00\x00"sv;

/// The transfers of the only candidate, as "in out"; "-" for none.
std::string transfers(const std::vector<UsbCandidate>& found) {
    if (found.size() != 1)
        return found.empty() ? "-" : "many";
    const auto name = [](UsbCandidate::Transfer transfer) {
        return transfer == UsbCandidate::Transfer::Bulk ? "bulk" : "interrupt";
    };
    return std::string(name(found[0].in)) + " " + name(found[0].out);
}

std::string transfersOf(std::string_view descriptors, const char* active = "1\n") {
    const TemporaryFolder folder;
    plugIn(folder, "1-1", 4, descriptors);
    folder.write("1-1/bConfigurationValue", active);
    return transfers(findUsbCandidates(folder.path()));
}

TEST(UsbDevices, TakesTheOnesWithTheDonglesPipes) {
    const Rows<const char*, std::vector<std::string_view>, const char*> cases{
        {"bulk", {vendorInterface, bulkIn, bulkOut}, "bulk bulk"},
        {"interrupt", {vendorInterface, interruptIn, interruptOut}, "interrupt interrupt"},
        {"mixed", {vendorInterface, bulkOut, interruptIn}, "interrupt bulk"},
        {"more pipes", {vendorInterface, otherIn, bulkIn, otherOut, bulkOut}, "bulk bulk"},
        {"something between", {unknown, vendorInterface, unknown, bulkIn, bulkOut}, "bulk bulk"},
        {"long endpoint", {vendorInterface, longEndpointIn, bulkOut}, "bulk bulk"},
        {"second interface",
         {vendorInterface, bulkIn, bulkOut, secondKeyboard, keyboardIn},
         "bulk bulk"},
        {"other setting behind",
         {vendorInterface, bulkIn, bulkOut, otherSetting, interruptIn, interruptOut},
         "bulk bulk"},
        {"memory stick", {storageInterface, bulkIn, bulkOut}, "-"},
        {"no way out", {vendorInterface, bulkIn}, "-"},
        {"no way in", {vendorInterface, bulkOut}, "-"},
        {"isochronous", {vendorInterface, isochronousIn, bulkOut}, "-"},
        {"other numbers", {vendorInterface, otherIn, otherOut}, "-"},
        {"pipes of interface 1", {emptySetting, secondVendorInterface, bulkIn, bulkOut}, "-"},
        {"pipes of another setting", {emptySetting, otherSetting, bulkIn, bulkOut}, "-"},
        {"nothing", {}, "-"},
        {"short interface", {vendorInterface, bulkIn, bulkOut, shortInterface}, "-"},
        {"short endpoint", {vendorInterface, bulkIn, bulkOut, shortEndpoint}, "-"},
        {"no length", {vendorInterface, bulkIn, bulkOut, noLength}, "-"},
        {"too long", {vendorInterface, bulkIn, bulkOut, tooLong}, "-"},
    };
    for (const auto& [what, parts, transfers] : cases)
        EXPECT_EQ(transfersOf(join({deviceDescriptor, configuration(1, parts)})), transfers)
            << what;
}

TEST(UsbDevices, LooksAtTheActiveConfiguration) {
    const std::string descriptors =
        join({deviceDescriptor, configuration(1, {storageInterface, bulkIn, bulkOut}),
              configuration(2, {vendorInterface, interruptIn, interruptOut})});
    for (const auto& [active, transfers] : Rows<const char*, const char*>{
             {"1\n", "-"}, {"2\n", "interrupt interrupt"}, {"3\n", "-"}, {"\n", "-"}})
        EXPECT_EQ(transfersOf(descriptors, active), transfers) << active;
    EXPECT_EQ(transfersOf(dongleDescriptors(), ""), "bulk bulk") << "not configured yet";
}

TEST(UsbDevices, LeavesOutDescriptorsThatEndAnywhere) {
    const std::string whole = dongleDescriptors();
    ASSERT_EQ(transfersOf(whole), "bulk bulk");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(transfersOf(whole.substr(0, length)), "-") << length;
}

TEST(UsbDevices, TellsWhatTheKernelKnowsInTheOrderOfTheBus) {
    const TemporaryFolder folder;
    plugIn(folder, "1-1", 12, dongleDescriptors());
    plugIn(folder, "1-3", 9, dongleDescriptors());
    plugIn(folder, "1-1:1.0", 1, dongleDescriptors()); // an interface
    plugIn(folder, "2-1", 1, dongleDescriptors());
    folder.write("2-1/busnum", "2\n");
    std::filesystem::remove(folder.path("2-1/product"));
    folder.write("3-1/busnum", "3\n"); // on its way out
    std::filesystem::create_directories(folder.path("4-1/busnum"));
    folder.write("usb1", "");

    EXPECT_TRUE(findUsbCandidates(folder.path("nowhere")).empty());
    const std::vector<UsbCandidate> found = findUsbCandidates(folder.path());
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(usbNode(found[0]), "/dev/bus/usb/001/009");
    EXPECT_EQ(usbNode(found[1]), "/dev/bus/usb/001/012");
    EXPECT_EQ(usbNode(found[2]), "/dev/bus/usb/002/001");
    EXPECT_EQ(found[0].folder, folder.path("1-3"));
    EXPECT_EQ(found[0].name, "Word dongle");
    EXPECT_EQ(found[2].name, "");
    EXPECT_EQ(numbersText(found[0].numbers), "1234:abcd");
}

TEST(UsbDevices, LeavesOutADeviceWithoutItsNumbers) {
    for (const char* file : {"busnum", "devnum", "idVendor", "idProduct"})
        for (const char* content : {"", "\n", "x\n", "-1\n", "99999999999\n", "1 2\n"}) {
            const TemporaryFolder folder;
            plugIn(folder, "1-1", 4, dongleDescriptors());
            folder.write(std::string("1-1/") + file, content);
            EXPECT_EQ(transfers(findUsbCandidates(folder.path())), "-") << file << content;
        }
}

} // namespace
} // namespace bitlux::test
