#pragma once

#include "emulated_dongle.h"
#include "os_answers.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

#include "platform/linux/linux_usb_host.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace bitlux {

inline std::ostream& operator<<(std::ostream& stream, UsbStatus status) {
    static constexpr std::array names{"Success",  "NothingRead", "NoFrame", "NotSetUp",
                                      "NoRights", "Busy",        "Failed",  "Gone"};
    return stream << names.at(static_cast<std::size_t>(status));
}

} // namespace bitlux

namespace bitlux::test {

inline constexpr UsbBuffers threeFrames{.size = 8, .count = 3, .errorsAllowed = 5};
inline constexpr std::int64_t enough = 2'000'000'000;

/// Two endpoints on a dongle, one that reads and one that writes.
class UsbLink {
public:
    explicit UsbLink(UsbHost& host) : reader(host.makeEndpoint()), writer(host.makeEndpoint()) {}

    /// Opens the only dongle and starts both; the status of the first call that fails. The writer
    /// relies on the interface and the configuration of the reader.
    UsbStatus open() {
        if (reader->enumerate(dongleClass) != 1)
            return UsbStatus::Gone;
        for (const UsbStatus status : {reader->open(0), writer->open(0), reader->addInterface(0, 0),
                                       reader->setConfiguration(0), reader->bind(0x81),
                                       reader->resetPipe(), writer->bind(0x02)})
            if (status != UsbStatus::Success)
                return status;
        return start();
    }
    UsbStatus start() const {
        const UsbStatus status = reader->startReading(threeFrames);
        return status == UsbStatus::Success ? writer->startWriting(threeFrames) : status;
    }

    /// Whether a frame goes out and comes back.
    void expectEcho(const UsbFrame& frame = {0xA5, 0xC3, 0, 0, 0, 0, 0, 16}) const {
        EXPECT_EQ(writer->write(frame), UsbStatus::Success);
        UsbFrame answer{};
        EXPECT_EQ(reader->read(answer, enough), UsbStatus::Success);
        EXPECT_EQ(answer, frame);
    }
    UsbStatus read(std::int64_t wait = enough) const {
        UsbFrame frame{};
        return reader->read(frame, wait);
    }

    std::unique_ptr<UsbEndpoint> reader;
    std::unique_ptr<UsbEndpoint> writer;
};

/// A machine without dongles, whose list of numbers has the one that emulated dongles have.
class UsbTest : public testing::Test {
protected:
    Testbed testbed;
    TemporaryFolder list;
    TemporaryFolder files;
    UsbPlaces places{.devices = list.path(),
                     .nodes = "/dev/bus/usb",
                     .numberFiles = {files.write("dongles.conf", "1234:abcd\n")}};
    LinuxUsbHost host{places};
};

} // namespace bitlux::test
