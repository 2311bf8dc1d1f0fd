#pragma once
#include "platform/usb_endpoint.h"
namespace bitlux {
class NoEndpoint : public UsbEndpoint {
public:
    int enumerate(std::string_view) override { return 0; }
    UsbStatus open(int) override { return UsbStatus::Gone; }
    UsbStatus addInterface(int, int) override { return UsbStatus::NotSetUp; }
    UsbStatus setConfiguration(int) override { return UsbStatus::NotSetUp; }
    UsbStatus bind(std::uint8_t) override { return UsbStatus::NotSetUp; }
    UsbStatus resetPipe() override { return UsbStatus::NotSetUp; }
    UsbStatus startReading(const UsbBuffers&) override { return UsbStatus::NotSetUp; }
    UsbStatus startWriting(const UsbBuffers&) override { return UsbStatus::NotSetUp; }
    UsbStatus write(const UsbFrame&) override { return UsbStatus::NotSetUp; }
    UsbStatus read(UsbFrame&, std::int64_t) override { return UsbStatus::NotSetUp; }
    UsbStatus resetDevice() override { return UsbStatus::NotSetUp; }
    UsbStatus stopReading() override { return UsbStatus::NotSetUp; }
    UsbStatus stopWriting() override { return UsbStatus::NotSetUp; }
    UsbStatus removeInterface() override { return UsbStatus::NotSetUp; }
    UsbStatus leaveConfiguration() override { return UsbStatus::NotSetUp; }
    void close() override {}
};
class LinuxUsbHost : public UsbHost {
public:
    std::unique_ptr<UsbEndpoint> makeEndpoint() override { return std::make_unique<NoEndpoint>(); }
};
} // namespace bitlux
