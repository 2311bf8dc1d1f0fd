#include "platform/linux/usb_connection.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

namespace bitlux {

namespace {

UsbStatus whyNotOpened(int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return UsbStatus::NoRights;
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return UsbStatus::Gone;
    case EBUSY:
        return UsbStatus::Busy;
    default:
        return UsbStatus::Failed;
    }
}

} // namespace

UsbConnection::Descriptor::Descriptor(const std::string& node)
    : number_(::open(node.c_str(), O_RDWR | O_CLOEXEC)) {}

UsbConnection::Descriptor::~Descriptor() {
    if (number_ >= 0)
        ::close(number_);
}

UsbConnection::UsbConnection(const std::string& node)
    : descriptor_(node),
      status_(descriptor_.number() < 0 ? whyNotOpened(errno) : UsbStatus::Success) {
    if (status_ == UsbStatus::Success)
        status_ = open();
}

UsbStatus UsbConnection::open() {
    // A default for contexts to come: without it each would scan all devices and start a thread.
    libusb_set_option(nullptr, LIBUSB_OPTION_NO_DEVICE_DISCOVERY);
    libusb_context* context = nullptr;
    if (libusb_init(&context) != LIBUSB_SUCCESS)
        return UsbStatus::Failed;
    context_.reset(context);
    libusb_device_handle* handle = nullptr;
    const int result = libusb_wrap_sys_device(context, descriptor_.number(), &handle);
    if (result != LIBUSB_SUCCESS)
        return note(result);
    handle_.reset(handle);
    return UsbStatus::Success;
}

UsbStatus UsbConnection::note(int result) {
    switch (result) {
    case LIBUSB_SUCCESS:
        return UsbStatus::Success;
    case LIBUSB_ERROR_NO_DEVICE:
        return status_ = UsbStatus::Gone;
    case LIBUSB_ERROR_ACCESS:
        return UsbStatus::NoRights;
    case LIBUSB_ERROR_BUSY:
        return UsbStatus::Busy;
    default:
        return UsbStatus::Failed;
    }
}

UsbStatus UsbConnection::wait(std::int64_t microseconds) {
    constexpr std::int64_t second = 1'000'000;
    microseconds = std::min(microseconds, 60 * second); // more does not fit into what it becomes
    timeval time{.tv_sec = microseconds / second, .tv_usec = microseconds % second};
    const int result = libusb_handle_events_timeout_completed(context_.get(), &time, nullptr);
    return result == LIBUSB_ERROR_INTERRUPTED ? UsbStatus::Success : note(result);
}

UsbStatus UsbConnection::ask(const ControlQuestion& question, std::vector<std::uint8_t>& answer) {
    constexpr unsigned milliseconds = 100;
    answer.resize(question.length);
    const int result =
        libusb_control_transfer(handle_.get(), question.type, question.request, question.value,
                                question.index, answer.data(), question.length, milliseconds);
    answer.resize(static_cast<std::size_t>(std::max(result, 0)));
    if (result >= 0)
        return UsbStatus::Success;
    if (result == LIBUSB_ERROR_PIPE || result == LIBUSB_ERROR_NO_DEVICE)
        return note(result);
    return UsbStatus::NothingRead;
}

std::uint16_t UsbConnection::usbVersion() const {
    libusb_device_descriptor descriptor{};
    libusb_get_device_descriptor(libusb_get_device(handle_.get()), &descriptor);
    return descriptor.bcdUSB;
}

} // namespace bitlux
