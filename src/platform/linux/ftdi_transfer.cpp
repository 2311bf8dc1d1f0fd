#include "platform/linux/ftdi_transfer.h"

#include <chrono>
#include <cstdlib>

namespace bitlux {

/// What ftdi_transfer_data_done does with one that is complete.
void FtdiTransfer::Free::operator()(ftdi_transfer_control* control) const {
    libusb_free_transfer(control->transfer);
    std::free(control); // NOLINT(cppcoreguidelines-no-malloc): libftdi has allocated it so
}

FtdiTransfer::~FtdiTransfer() {
    if (!control_)
        return;
    const libusb_transfer* const transfer = control_->transfer;
    const bool isStalled = transfer != nullptr && transfer->status == LIBUSB_TRANSFER_STALL;
    const unsigned char endpoint = transfer != nullptr ? transfer->endpoint : 0;
    if (!callBack())
        connection_.keepUntilClosed(std::shared_ptr<ftdi_transfer_control>(std::move(control_)));
    if (isStalled)
        libusb_clear_halt(connection_.handle(), endpoint);
}

bool FtdiTransfer::isComplete() const {
    return control_ && control_->completed != 0 && control_->offset == control_->size;
}

UsbStatus FtdiTransfer::status() const {
    if (!control_)
        return UsbStatus::Failed;
    const libusb_transfer* const transfer = control_->transfer;
    if (transfer != nullptr && transfer->status == LIBUSB_TRANSFER_NO_DEVICE)
        return UsbStatus::Gone;
    const bool hasEndedBadly = transfer != nullptr && transfer->status != LIBUSB_TRANSFER_COMPLETED;
    const bool hasGivenUp = control_->completed != 0 && control_->offset < control_->size;
    return hasEndedBadly || hasGivenUp ? UsbStatus::Failed : UsbStatus::Success;
}

std::size_t FtdiTransfer::moved() const {
    return control_ ? static_cast<std::size_t>(control_->offset) : 0;
}

/// False when it has not come back after a second.
bool FtdiTransfer::callBack() const {
    using namespace std::chrono;
    if (control_->completed != 0)
        return true;
    // libftdi's own would submit it again after a failure.
    control_->transfer->callback = [](libusb_transfer* transfer) {
        static_cast<ftdi_transfer_control*>(transfer->user_data)->completed = 1;
    };
    libusb_cancel_transfer(control_->transfer);
    const auto end = steady_clock::now() + seconds(1);
    while (control_->completed == 0) {
        const auto left = duration_cast<microseconds>(end - steady_clock::now());
        if (left.count() <= 0 || connection_.wait(left.count()) != UsbStatus::Success)
            return false;
    }
    return true;
}

} // namespace bitlux
