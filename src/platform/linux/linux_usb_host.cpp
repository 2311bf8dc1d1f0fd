#include "platform/linux/linux_usb_host.h"

#include "platform/linux/open_dongle.h"
#include "platform/printable.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

class LinuxUsbHost::Endpoint final : public UsbEndpoint {
public:
    explicit Endpoint(LinuxUsbHost& host) : host_(host) {}
    ~Endpoint() override { release(); }
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    int enumerate(std::string_view deviceInterfaceClass) override {
        return host_.search(deviceInterfaceClass);
    }

    UsbStatus open(int index) override {
        release();
        return host_.openDongle(index, dongle_);
    }

    UsbStatus addInterface(int number, int alternateSetting) override {
        return onDongle(isOpen(), [&] { return dongle_->addInterface(number, alternateSetting); });
    }
    UsbStatus setConfiguration(int index) override {
        return onDongle(isOpen(), [&] { return dongle_->setConfiguration(index); });
    }

    UsbStatus bind(std::uint8_t endpointAddress) override {
        return onDongle(isOpen() && dongle_->isSetUp(), [&] {
            if (endpointAddress != dongleInEndpoint && endpointAddress != dongleOutEndpoint)
                return UsbStatus::Failed;
            unbind();
            bound_ = endpointAddress;
            return UsbStatus::Success;
        });
    }

    UsbStatus resetPipe() override {
        return onDongle(bound_ != none, [&] { return dongle_->clearHalt(bound_); });
    }
    UsbStatus startReading(const UsbBuffers& buffers) override {
        return onDongle(isReader(), [&] { return dongle_->startReading(buffers); });
    }
    UsbStatus startWriting(const UsbBuffers& buffers) override {
        return onDongle(isWriter(), [&] { return dongle_->startWriting(buffers); });
    }
    UsbStatus write(const UsbFrame& frame) override {
        return onDongle(isWriter(), [&] { return dongle_->write(frame); });
    }
    UsbStatus read(UsbFrame& frame, std::int64_t wait) override {
        return onDongle(isReader(), [&] { return dongle_->read(frame, wait); });
    }
    UsbStatus resetDevice() override {
        return onDongle(isOpen(), [&] { return dongle_->reset(); });
    }

    UsbStatus stopReading() override {
        return onDongle(isReader(), [&] {
            dongle_->stopReading();
            return UsbStatus::Success;
        });
    }
    UsbStatus stopWriting() override {
        return onDongle(isWriter(), [&] {
            dongle_->stopWriting();
            return UsbStatus::Success;
        });
    }
    UsbStatus removeInterface() override {
        return onDongle(isOpen(), [&] { return dongle_->removeInterface(); });
    }
    UsbStatus leaveConfiguration() override {
        return onDongle(isOpen(), [&] { return dongle_->leaveConfiguration(); });
    }
    void close() override { release(); }

private:
    static constexpr std::uint8_t none = 0;

    template <typename Action>
    UsbStatus onDongle(bool isReadyForIt, Action action) {
        if (!isReadyForIt)
            return UsbStatus::NotSetUp;
        return dongle_->status() == UsbStatus::Success ? action() : dongle_->status();
    }

    [[nodiscard]] bool isOpen() const { return dongle_ != nullptr; }
    [[nodiscard]] bool isReader() const { return bound_ == dongleInEndpoint; }
    [[nodiscard]] bool isWriter() const { return bound_ == dongleOutEndpoint; }

    void unbind() {
        if (isReader())
            dongle_->stopReading();
        if (isWriter())
            dongle_->stopWriting();
        bound_ = none;
    }

    void release() {
        unbind();
        dongle_.reset();
    }

    LinuxUsbHost& host_;
    std::shared_ptr<OpenDongle> dongle_;
    std::uint8_t bound_ = none; // the address of a pipe
};

LinuxUsbHost::LinuxUsbHost(UsbPlaces places, std::string serial)
    : search_(std::move(places), std::move(serial)) {}

std::unique_ptr<UsbEndpoint> LinuxUsbHost::makeEndpoint() {
    return std::make_unique<Endpoint>(*this);
}

int LinuxUsbHost::search(std::string_view deviceInterfaceClass) {
    result_ = UsbStatus::Success;
    found_ = search_.find(deviceInterfaceClass);
    return static_cast<int>(found_.size());
}

std::string LinuxUsbHost::refusal() const {
    if (result_ == UsbStatus::Success)
        return {};
    const std::string dongle = wanted_.serial.empty()
                                   ? "The dongle"
                                   : "The dongle " + printable(wanted_.serial, longestSerial);
    if (result_ != UsbStatus::Busy)
        return dongle + " cannot be opened; \"bitlux doctor\" tells why.";
    const std::string holders = search_.holders(wanted_);
    return fmt::format("{} is in use by {}.", dongle,
                       holders.empty() ? "a program that you may not see" : holders);
}

UsbStatus LinuxUsbHost::openDongle(int index, std::shared_ptr<OpenDongle>& dongle) {
    if (index < 0 || static_cast<std::size_t>(index) >= found_.size())
        return UsbStatus::NotSetUp;
    const UsbCandidate& device = found_[static_cast<std::size_t>(index)];
    std::erase_if(shared_, [](const Shared& shared) { return shared.dongle.expired(); });
    for (const Shared& shared : shared_)
        if (const auto held = shared.dongle.lock();
            isSameDevice(shared.device, device) && held->status() == UsbStatus::Success) {
            dongle = held;
            return UsbStatus::Success;
        }
    auto opened = std::make_shared<OpenDongle>(search_.node(device), device);
    wanted_ = device;
    result_ = opened->status();
    if (result_ != UsbStatus::Success)
        return result_;
    shared_.push_back({device, opened});
    dongle = std::move(opened);
    return UsbStatus::Success;
}

} // namespace bitlux
