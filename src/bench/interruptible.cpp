#include "bench/interruptible.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

/// How long an interruption may have to wait, in nanoseconds.
constexpr std::int64_t slice = 50'000'000;

class InterruptibleEndpoint : public UsbEndpoint {
public:
    InterruptibleEndpoint(std::unique_ptr<UsbEndpoint> endpoint, const Clock& clock,
                          const Interruption& interruption)
        : endpoint_(std::move(endpoint)), clock_(clock), interruption_(interruption) {}

    UsbStatus read(UsbFrame& frame, std::int64_t wait) override {
        const std::int64_t start = clock_.nanoseconds();
        for (;;) {
            const std::int64_t left =
                std::max<std::int64_t>(wait - (clock_.nanoseconds() - start), 0);
            const UsbStatus status = endpoint_->read(frame, std::min(left, slice));
            if (status != UsbStatus::NothingRead || left <= slice)
                return status;
            interruption_.check();
        }
    }

    int enumerate(std::string_view deviceClass) override {
        return endpoint_->enumerate(deviceClass);
    }
    UsbStatus open(int index) override { return endpoint_->open(index); }
    UsbStatus addInterface(int number, int alternateSetting) override {
        return endpoint_->addInterface(number, alternateSetting);
    }
    UsbStatus setConfiguration(int index) override { return endpoint_->setConfiguration(index); }
    UsbStatus bind(std::uint8_t address) override { return endpoint_->bind(address); }
    UsbStatus resetPipe() override { return endpoint_->resetPipe(); }
    UsbStatus startReading(const UsbBuffers& buffers) override {
        return endpoint_->startReading(buffers);
    }
    UsbStatus startWriting(const UsbBuffers& buffers) override {
        return endpoint_->startWriting(buffers);
    }
    UsbStatus write(const UsbFrame& frame) override { return endpoint_->write(frame); }
    UsbStatus resetDevice() override { return endpoint_->resetDevice(); }
    UsbStatus stopReading() override { return endpoint_->stopReading(); }
    UsbStatus stopWriting() override { return endpoint_->stopWriting(); }
    UsbStatus removeInterface() override { return endpoint_->removeInterface(); }
    UsbStatus leaveConfiguration() override { return endpoint_->leaveConfiguration(); }
    void close() override { endpoint_->close(); }

private:
    std::unique_ptr<UsbEndpoint> endpoint_;
    const Clock& clock_;
    const Interruption& interruption_;
};

} // namespace

void InterruptibleVirtualClock::idle(std::int64_t duration) {
    interruption_.check();
    VirtualClock::idle(duration);
}

void InterruptibleRealClock::idle(std::int64_t duration) {
    const std::int64_t end = nanoseconds() + duration;
    for (std::int64_t left = duration; left > 0; left = end - nanoseconds()) {
        interruption_.sleep(std::min(left, slice));
        interruption_.check();
    }
}

void InterruptibleLoop::turn() {
    interruption_.check();
    ScriptedLoop::turn();
}

std::unique_ptr<UsbEndpoint> InterruptibleUsbHost::makeEndpoint() {
    return std::make_unique<InterruptibleEndpoint>(host_.makeEndpoint(), clock_, interruption_);
}

} // namespace bitlux
