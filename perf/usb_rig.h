#pragma once

#include "platform/linux/linux_usb_host.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <vector>

namespace bitlux::perf {

inline void require(bool good, const char* what) {
    if (!good)
        throw std::runtime_error(what);
}

/// Words of 32 bits through a dongle, with the transport of the program.
class DongleWords {
public:
    static constexpr UsbFrame word{0xDE, 0xAD, 0xBE, 0xEF, 0, 0, 0, 32};

    explicit DongleWords(const UsbPlaces& places) : host_(places) {
        require(reader_->enumerate("") == 1, "one dongle");
        prepare(*reader_, dongleInEndpoint);
        prepare(*writer_, dongleOutEndpoint);
        const UsbBuffers buffers{.size = 8, .count = 3, .errorsAllowed = 5};
        require(reader_->startReading(buffers) == UsbStatus::Success, "reading");
        require(writer_->startWriting(buffers) == UsbStatus::Success, "writing");
    }

    void exchange() {
        UsbFrame answer{};
        require(writer_->write(word) == UsbStatus::Success, "write");
        require(reader_->read(answer, 1'000'000'000) == UsbStatus::Success, "read");
        require(answer == word, "echo");
    }

private:
    static void prepare(UsbEndpoint& endpoint, std::uint8_t address) {
        for (const UsbStatus status : {endpoint.open(0), endpoint.addInterface(0, 0),
                                       endpoint.setConfiguration(0), endpoint.bind(address)})
            require(status == UsbStatus::Success, "open");
    }

    LinuxUsbHost host_;
    std::unique_ptr<UsbEndpoint> reader_ = host_.makeEndpoint();
    std::unique_ptr<UsbEndpoint> writer_ = host_.makeEndpoint();
};

/// Microseconds a word.
struct Cost {
    double elapsed;
    double processor;
};

inline double microseconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// Of so many words.
template <typename Loop>
Cost measure(Loop& loop, int words = 300) {
    const double start = microseconds(CLOCK_MONOTONIC);
    const double processor = microseconds(CLOCK_THREAD_CPUTIME_ID);
    for (int i = 0; i < words; ++i)
        loop.exchange();
    return {(microseconds(CLOCK_MONOTONIC) - start) / words,
            (microseconds(CLOCK_THREAD_CPUTIME_ID) - processor) / words};
}

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace bitlux::perf
