#include "emulated_adapter.h"
#include "failure_text.h"
#include "ordinary_user.h"
#include "support/rows.h"

#include "platform/linux/linux_adapter_host.h"

#include <filesystem>
#include <numeric>
#include <optional>

#include <sys/stat.h>

#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

using Bytes = std::vector<std::uint8_t>;
using Texts = std::vector<std::string>;

class AdapterTest : public testing::Test {
protected:
    AdapterPlaces places() {
        return {.devices = list.path(),
                .nodes = nodes,
                .processes = files.path("proc"),
                .settingsFiles = {files.path("adapters.conf")},
                .timeout = timeout};
    }
    std::vector<Adapter> find() { return LinuxAdapterHost(places()).find(); }
    /// The only one.
    Adapter theAdapter() {
        const std::vector<Adapter> found = find();
        EXPECT_EQ(found.size(), 1U);
        return found.at(0);
    }
    std::unique_ptr<AdapterLink> open(const Adapter& adapter) {
        return LinuxAdapterHost(places()).open(adapter);
    }
    std::unique_ptr<AdapterLink> open() { return open(theAdapter()); }
    std::string refusal() {
        const Adapter adapter = theAdapter();
        return failureText([&] { open(adapter); });
    }
    void runProgram(const std::string& name, const std::string& node) {
        files.write("proc/97/comm", name + "\n");
        fs::create_directories(files.path("proc/97/fd"));
        fs::remove(files.path("proc/97/fd/3"));
        fs::create_symlink(node, files.path("proc/97/fd/3"));
    }
    static Bytes exchange(AdapterLink& link, const Bytes& bytes) {
        Bytes samples(bytes.size(), 0xEE);
        link.exchange(bytes, samples);
        return samples;
    }

    Testbed testbed;
    TemporaryFolder list;
    TemporaryFolder files;
    std::string nodes = "/dev/bus/usb";
    std::chrono::nanoseconds timeout = FtdiLink::standardTimeout;
};

/// Bytes that are all different from their neighbours.
Bytes manyBytes(std::size_t count) {
    Bytes bytes(count);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

/// What an unwired adapter samples: each byte a place later.
Bytes later(std::uint8_t before, Bytes bytes) {
    bytes.insert(bytes.begin(), before);
    bytes.pop_back();
    return bytes;
}

TEST_F(AdapterTest, FindsAdaptersWithoutTouchingThem) {
    EmulatedAdapter second(testbed, list, ft230x);
    AdapterKind nameless = ft232h;
    nameless.address = 4;
    nameless.serial.clear();
    EmulatedAdapter first(testbed, list, nameless);
    AdapterKind old = ft2232h;
    old.address = 7;
    old.release = 0x0500; // an FT2232D
    const EmulatedAdapter stranger(testbed, list, old);
    files.write("adapters.conf", "[DN01]\nclock = 400_000\n['1-4']\n2 = 'D7'\nkeep_lines = true\n");
    const std::vector<Adapter> found = find();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name(), "FT232H at 1-4");
    EXPECT_EQ(found[0].wiring.pinsText(), "2");
    EXPECT_TRUE(found[0].keepsLines);
    EXPECT_EQ(found[1].name(), "FT230X DN01");
    EXPECT_EQ(found[1].wiring.pinsText(), "2 to 4 and 12");
    EXPECT_EQ(found[1].clock, 400'000);
    EXPECT_FALSE(found[1].keepsLines);
    EXPECT_EQ(first.requests() + second.requests(), 0);
    second.unplug();
    EXPECT_EQ(find().size(), 1U);
    LinuxAdapterHost missing(places(), {.isDemanded = true, .serial = "A1"});
    EXPECT_EQ(failureText([&] { missing.demandChosen(); }),
              "There is no adapter with the serial number A1; there is FT232H at 1-4.");
    LinuxAdapterHost wanting(places(), {.isDemanded = true, .clock = 9'000});
    wanting.demandChosen();
    EXPECT_EQ(wanting.find().at(0).clock, 9'000);
}

TEST_F(AdapterTest, SetsUpEachKindOfChip) {
    files.write("adapters.conf", "[FT2ABC]\nchannel = 'B'\n");
    for (const auto& [kind, clock, rate, baud, index, out] :
         Rows<AdapterKind, int, double, std::string, int, std::uint8_t>{
             {{}, 1'000'000, 1e6, "0030 0000", 1, 0x02},
             {{}, 700'000, 48e6 / 68.625, "4044 0001", 1, 0x02},
             {ft230x, 1'000'000, 1e6, "0030 0000", 1, 0x02},
             {ft232h, 1'000'000, 1e6, "003C 0201", 1, 0x02},
             {ft232h, 777'777, 60e6 / 77.125, "C04D 0201", 1, 0x02},
             {ft2232h, 1'000'000, 1e6, "003C 0202", 2, 0x04}}) {
        SCOPED_TRACE(fmt::format("{} at {}", kind.name, clock));
        EmulatedAdapter adapter(testbed, list, kind);
        Adapter wanted = theAdapter();
        wanted.clock = clock;
        std::unique_ptr<AdapterLink> link = open(wanted);
        EXPECT_EQ(link->rate(), rate);
        EXPECT_EQ(
            adapter.controls(),
            (Texts{fmt::format("40 00 0000 {:04X}", index), fmt::format("40 09 0001 {:04X}", index),
                   "40 03 " + baud, fmt::format("40 0B 0400 {:04X}", index),
                   fmt::format("40 00 0001 {:04X}", index),
                   fmt::format("40 00 0002 {:04X}", index)}));
        link->drive(0x0B);
        EXPECT_EQ(exchange(*link, {0xFF, 0x02}), (Bytes{0x00, 0x0B}));
        EXPECT_EQ(adapter.submitted(out), 1);
        link.reset();
        EXPECT_EQ(adapter.controls(), (Texts{fmt::format("40 0B 040B {:04X}", index),
                                             fmt::format("40 0B 0000 {:04X}", index)}));
        EXPECT_EQ(adapter.drivers(), (Texts{fmt::format("taken off {}", index - 1),
                                            fmt::format("given back {}", index - 1)}));
        EXPECT_FALSE(adapter.isHeld());
    }
}

TEST_F(AdapterTest, CarriesAWordInOneExchangeThroughAnyBuffer) {
    for (const auto& [kind, sizes] : Rows<AdapterKind, std::vector<std::size_t>>{
             {{}, {1, 62, 63, 67, 124, 325, 4096}}, {ft232h, {1, 325, 510, 511, 1020, 4096}}}) {
        EmulatedAdapter adapter(testbed, list, kind);
        const std::unique_ptr<AdapterLink> link = open();
        link->drive(0xFF);
        std::uint8_t before = 0;
        int exchanges = 0;
        for (const std::size_t size : sizes) {
            SCOPED_TRACE(fmt::format("{} bytes on {}", size, kind.name));
            adapter.sendStatus(exchanges % 3);
            const Bytes bytes = manyBytes(size);
            const int transfers = adapter.submitted();
            EXPECT_EQ(exchange(*link, bytes), later(before, bytes));
            EXPECT_EQ(adapter.written(), (std::vector<Bytes>{bytes}));
            EXPECT_EQ(adapter.submitted(0x02), ++exchanges);
            EXPECT_EQ(adapter.endpointAfter(transfers), 0x81) << "somebody fetches samples";
            EXPECT_EQ(adapter.waiting(), 0);
            before = bytes.back();
        }
    }
}

TEST_F(AdapterTest, SamplesInputsJustBeforeEachByte) {
    EmulatedAdapter adapter(testbed, list);
    const std::unique_ptr<AdapterLink> link = open();
    // D2 follows D1, and D4 is high by itself
    adapter.wire([](std::uint8_t outputs) {
        return static_cast<std::uint8_t>(outputs | (outputs & 2) << 1 | 0x10);
    });
    EXPECT_EQ(exchange(*link, {0x0B, 0x08}), (Bytes{0x10, 0x10})) << "all are inputs";
    EXPECT_EQ(adapter.outputs(), 0);
    link->drive(0x0B);
    EXPECT_EQ(adapter.outputs(), 0x08) << "written again";
    EXPECT_EQ(exchange(*link, {0x02, 0x03, 0x0A}), (Bytes{0x18, 0x16, 0x17}));
    link->drive(0x03);
    EXPECT_EQ(adapter.outputs(), 0x02);
    EXPECT_EQ(adapter.written(),
              (std::vector<Bytes>{{0x0B, 0x08}, {0x08}, {0x02, 0x03, 0x0A}, {0x0A}}));
}

TEST_F(AdapterTest, EndsWithInputsUnlessTheLinesAreToStay) {
    AdapterKind alone;
    alone.hasDriver = false;
    EmulatedAdapter adapter(testbed, list, alone);
    Adapter keeping = theAdapter();
    keeping.keepsLines = true;
    std::unique_ptr<AdapterLink> link = open(keeping);
    link->drive(0x0F);
    exchange(*link, {0x0A});
    link.reset();
    EXPECT_EQ(adapter.outputs(), 0x0A);
    open();
    EXPECT_EQ(adapter.outputs(), 0);
    EXPECT_EQ(adapter.drivers(), Texts{}) << "no driver had it";
}

TEST_F(AdapterTest, TellsWhatGoesWrongInAWord) {
    const std::string again = ". Unplug it and plug it in again, then try again.";
    const std::string lost = "The adapter FT232R A50285BI was lost while in use: it was removed. "
                             "Check that it is plugged in, then try again.";
    timeout = 0ns;
    for (const auto& [what, fault, text] : Rows<const char*, EmulatedAdapter::Fault, std::string>{
             {"stalled out", {.stalled = 0x02}, "has broken off the transfer" + again},
             {"stalled in", {.stalled = 0x81}, "has broken off the transfer" + again},
             {"short", {.lost = 3}, "has sent 322 of 325 samples and no more" + again},
             {"silent", {.lost = 325}, "does not answer" + again},
             {"held", {.holds = true}, "does not answer" + again},
             {"unplugged at once", {.unplugAfter = 1}, lost},
             {"unplugged in it", {.unplugAfter = 200}, lost}}) {
        SCOPED_TRACE(what);
        EmulatedAdapter adapter(testbed, list);
        std::unique_ptr<AdapterLink> link = open();
        adapter.fail(fault);
        const std::string told = failureText([&] { exchange(*link, manyBytes(325)); });
        EXPECT_NE(told.find(text), std::string::npos) << told;
        EXPECT_EQ(adapter.waiting(), 0);
        adapter.recover();
        EXPECT_EQ(failureText([&] { exchange(*link, {1}); }), told) << "it stays so";
        EXPECT_EQ(failureText([&] { link->drive(1); }), told);
        link.reset();
        if (fault.unplugAfter != 0)
            continue;
        timeout = FtdiLink::standardTimeout;
        link = open();
        EXPECT_EQ(exchange(*link, {1}).size(), 1U) << "opened again, it works";
        timeout = 0ns;
    }
}

TEST_F(AdapterTest, SleepsUntilTheSamplesCome) {
    EmulatedAdapter adapter(testbed, list);
    const std::unique_ptr<AdapterLink> link = open();
    link->drive(0xFF);
    adapter.fail({.holds = true});
    const int polls = PolledNode::polls();
    const int waits = PolledNode::waits();
    PolledNode::whenWaiting([&] { adapter.recover(); });
    EXPECT_EQ(exchange(*link, {1, 2, 3}), (Bytes{0, 1, 2}));
    EXPECT_GE(PolledNode::waits() - waits, 400) << "it asks for the whole time at once";
    EXPECT_LE(PolledNode::polls() - polls, 10);
}

TEST_F(AdapterTest, ComesBackWhenItIsPluggedInAgain) {
    std::optional<EmulatedAdapter> adapter(std::in_place, testbed, list);
    const Adapter known = theAdapter();
    std::unique_ptr<AdapterLink> link = open(known);
    adapter->unplug();
    EXPECT_EQ(failureText([&] { link->drive(1); }),
              "The adapter FT232R A50285BI was lost while in use: it was removed. Check that it is "
              "plugged in, then try again.");
    EXPECT_EQ(failureText([&] { open(known); }), "The adapter FT232R A50285BI is not plugged in. "
                                                 "Plug it in, then try again.");
    adapter.emplace(testbed, list);
    link = open(known);
    EXPECT_EQ(exchange(*link, {1}), Bytes{0});
}

TEST_F(AdapterTest, RefusesWhatItCannotOpen) {
    EmulatedAdapter adapter(testbed, list);
    files.write("adapters.conf", "[A50285BI]\nclock = 2_999\n");
    EXPECT_EQ(refusal(), "The adapter FT232R A50285BI cannot put out 2,999 bytes a second. Choose "
                         "a clock from 3,000 to 24,000,000 Hz.");
    files.write("adapters.conf", "[A50285BI]\nchannel = 'B'\n");
    EXPECT_EQ(refusal(), "The adapter FT232R A50285BI has no channel B, which adapters.conf gives "
                         "it. Its last is A.");
    files.write("adapters.conf", "[A50285BI]\n4 = 'D8'\n");
    EXPECT_EQ(refusal(), "The adapter FT232R A50285BI has wrong settings. " +
                             files.path("adapters.conf") +
                             ":2:5: pin 4 gets no line. Write one from \"D0\" to \"D7\".");
    files.write("adapters.conf", "");
    EXPECT_EQ(adapter.requests(), 0);

    runProgram("minicom", "/dev/ttyUSB0");
    EXPECT_EQ(refusal(), "The adapter FT232R A50285BI is in use as /dev/ttyUSB0 by minicom "
                         "(process 97). Close it, then try again.");
    EXPECT_EQ(adapter.requests(), 0) << "its serial port goes on";
    runProgram("bitlux-forge", "/dev/bus/usb/001/005");
    const std::unique_ptr<AdapterLink> link = open();
    EXPECT_EQ(refusal(), "The adapter FT232R A50285BI is in use by bitlux-forge (process 97). "
                         "Close it, then try again.");
    EXPECT_EQ(exchange(*link, {1}), Bytes{0});
}

TEST_F(AdapterTest, SaysWhatAnUnwillingOneLacks) {
    EmulatedAdapter adapter(testbed, list);
    adapter.fail({.refused = 0x03});
    EXPECT_EQ(refusal(), "The adapter FT232R A50285BI refuses to be set up. Unplug it and plug it "
                         "in again, then try again.");
    EXPECT_FALSE(adapter.isHeld());
    EXPECT_EQ(adapter.drivers(), (Texts{"taken off 0", "given back 0"}));
    nodes = files.path();
    ASSERT_EQ(::chmod(files.write("001/005", "").c_str(), 0), 0);
    const OrdinaryUser user;
    EXPECT_EQ(refusal(), "You have no permission to use the adapter FT232R A50285BI. \"bitlux "
                         "doctor\" tells what is missing: a udev rule, or the group plugdev.");
}

} // namespace

} // namespace bitlux::test
