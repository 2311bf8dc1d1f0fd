// Feeds bytes to the readers of what a USB device reports: its descriptors, and the Microsoft OS
// descriptors of either version.

#include "hardware/os_answers.h"
#include "memory_file.h"
#include "platform/linux/usb_devices.h"
#include "support/usb_descriptors.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bitlux;
    const std::string bytes(data, data + size);
    static const test::TemporaryFolder folder;
    test::plugIn(folder, "1-1", 4, bytes);
    fuzz::require(findUsbCandidates(folder.path()).size() <= 1, "more devices than there are");
    test::OsAnswers answers{.properties = bytes, .set = bytes};
    for (const bool damagesCapabilities : {false, true}) {
        if (damagesCapabilities)
            answers.capabilities = bytes;
        for (const std::uint16_t usbVersion : {std::uint16_t{0x0200}, std::uint16_t{0x0201}})
            for (const std::string& name : deviceInterfaceClasses(answers.ask(), usbVersion))
                fuzz::require(!name.empty() && name.size() <= 2 * size, "a name from nowhere");
    }
    return 0;
}
