#include "platform/linux/ftdi_connection.h"

#include "platform/linux/ftdi_transfer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <new>

namespace bitlux {

namespace {

constexpr int answerTime = 2000;      // milliseconds; the slowest word takes less
constexpr unsigned char quickest = 1; // milliseconds until the chip sends what fills no packet

ftdi_context* makeContext() {
    // A default for contexts to come, as for a connection: without it each would scan all devices.
    libusb_set_option(nullptr, LIBUSB_OPTION_NO_DEVICE_DISCOVERY);
    ftdi_context* const context = ftdi_new();
    if (context == nullptr)
        throw std::bad_alloc();
    libusb_exit(context->usb_ctx); // the connection has one
    context->usb_ctx = nullptr;
    return context;
}

ftdi_interface interfaceOf(int channel) {
    constexpr std::array interfaces{INTERFACE_A, INTERFACE_B, INTERFACE_C, INTERFACE_D};
    return interfaces.at(static_cast<std::size_t>(channel));
}

} // namespace

FtdiConnection::FtdiConnection(const std::string& node, const FtdiChip& chip, int channel)
    : ftdi_(makeContext()), connection_(node), claimed_(connection_.status()) {
    ftdi_->type = static_cast<ftdi_chip_type>(chip.type);
    ftdi_->usb_read_timeout = ftdi_->usb_write_timeout = answerTime;
    ftdi_set_interface(ftdi_.get(), interfaceOf(channel));
    if (claimed_ == UsbStatus::Success)
        claimed_ = claim();
}

FtdiConnection::~FtdiConnection() {
    if (claimed_ == UsbStatus::Success)
        libusb_release_interface(connection_.handle(), ftdi_->interface);
}

UsbStatus FtdiConnection::status() const {
    return claimed_ == UsbStatus::Success ? connection_.status() : claimed_;
}

UsbStatus FtdiConnection::claim() {
    libusb_device_handle* const handle = connection_.handle();
    // a driver that did not have it is not to get it afterwards
    if (libusb_kernel_driver_active(handle, ftdi_->interface) == 1)
        libusb_set_auto_detach_kernel_driver(handle, 1);
    const UsbStatus status = connection_.note(libusb_claim_interface(handle, ftdi_->interface));
    if (status != UsbStatus::Success)
        return status;
    // A chip of high speed has small packets behind a hub of full speed.
    const int packet = libusb_get_max_packet_size(libusb_get_device(handle),
                                                  static_cast<unsigned char>(ftdi_->out_ep));
    ftdi_->usb_ctx = connection_.context();
    ftdi_set_usbdev(ftdi_.get(), handle);
    ftdi_->max_packet_size = static_cast<unsigned>(std::max(packet, 0));
    constexpr unsigned statusBytes = 2; // ahead of each packet
    return ftdi_->max_packet_size > statusBytes ? status : UsbStatus::Failed;
}

bool FtdiConnection::start(int baud) {
    ftdi_context* const ftdi = ftdi_.get();
    // In this order: libftdi changes the rate in the mode, and what came before it is no sample.
    return ftdi_usb_reset(ftdi) == 0 && ftdi_set_latency_timer(ftdi, quickest) == 0 &&
           ftdi_set_baudrate(ftdi, baud) == 0 && drive(0) && ftdi_tcioflush(ftdi) == 0;
}

bool FtdiConnection::drive(std::uint8_t outputs) {
    return ftdi_set_bitmode(ftdi_.get(), outputs, BITMODE_SYNCBB) == 0;
}

void FtdiConnection::leave() {
    ftdi_set_bitmode(ftdi_.get(), 0, BITMODE_RESET);
}

UsbStatus FtdiConnection::exchange(std::span<const std::uint8_t> bytes,
                                   std::span<std::uint8_t> samples, std::int64_t waits) {
    std::copy(bytes.begin(), bytes.end(), out_.begin());
    const UsbStatus status = carry(static_cast<int>(bytes.size()), waits);
    if (status == UsbStatus::Success)
        std::copy_n(in_.begin(), samples.size(), samples.begin());
    return status;
}

UsbStatus FtdiConnection::carry(int size, std::int64_t waits) {
    using namespace std::chrono;
    const auto end = steady_clock::now() + nanoseconds(waits);
    // The read comes first: a chip whose buffer is full of samples takes no more bytes.
    FtdiTransfer reading(connection_, ftdi_read_data_submit(ftdi_.get(), in_.data(), size));
    FtdiTransfer writing(connection_, ftdi_write_data_submit(ftdi_.get(), out_.data(), size));
    bool isOver = false;
    while (reading.status() == UsbStatus::Success && writing.status() == UsbStatus::Success &&
           !isOver && !(reading.isComplete() && writing.isComplete())) {
        const auto left = std::max(ceil<microseconds>(end - steady_clock::now()), microseconds(0));
        isOver = left.count() == 0;
        connection_.wait(left.count());
    }
    received_ = reading.moved();
    for (const FtdiTransfer* transfer : {&reading, &writing})
        if (transfer->status() == UsbStatus::Gone)
            return connection_.note(LIBUSB_ERROR_NO_DEVICE);
        else if (transfer->status() != UsbStatus::Success)
            return isGone() ? UsbStatus::Gone : UsbStatus::Failed;
    if (!reading.isComplete() || !writing.isComplete())
        return UsbStatus::NothingRead;
    return ftdi_->readbuffer_remaining == 0 ? UsbStatus::Success : UsbStatus::NoFrame;
}

bool FtdiConnection::isGone() {
    int configuration = 0;
    if (status() == UsbStatus::Success)
        connection_.note(libusb_get_configuration(connection_.handle(), &configuration));
    return status() == UsbStatus::Gone;
}

} // namespace bitlux
