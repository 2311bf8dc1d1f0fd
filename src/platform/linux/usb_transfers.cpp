#include "platform/linux/usb_transfers.h"

#include <algorithm>
#include <chrono>
#include <new>

namespace bitlux {

UsbTransfer::UsbTransfer(libusb_device_handle* handle, const UsbPipe& pipe)
    : transfer_(libusb_alloc_transfer(0)) {
    if (transfer_ == nullptr)
        throw std::bad_alloc();
    transfer_->dev_handle = handle;
    transfer_->endpoint = pipe.address;
    transfer_->type = static_cast<unsigned char>(pipe.type);
    transfer_->buffer = frame.data();
    transfer_->length = static_cast<int>(frame.size());
    transfer_->user_data = &underWay_;
    transfer_->callback = [](libusb_transfer* transfer) {
        *static_cast<bool*>(transfer->user_data) = false;
    };
}

int UsbTransfer::submit() {
    const int result = libusb_submit_transfer(transfer_.get());
    underWay_ = result == LIBUSB_SUCCESS;
    return result;
}

void UsbTransfer::cancel() {
    libusb_cancel_transfer(transfer_.get());
}

UsbStatus UsbTransfer::outcome() const {
    switch (transfer_->status) {
    case LIBUSB_TRANSFER_COMPLETED:
        return transfer_->actual_length == transfer_->length ? UsbStatus::Success
                                                             : UsbStatus::NoFrame;
    case LIBUSB_TRANSFER_OVERFLOW:
        return UsbStatus::NoFrame;
    case LIBUSB_TRANSFER_CANCELLED:
        return UsbStatus::NothingRead;
    case LIBUSB_TRANSFER_NO_DEVICE:
        return UsbStatus::Gone;
    default:
        return UsbStatus::Failed;
    }
}

UsbTransfers::UsbTransfers(UsbConnection& connection, const UsbPipe& pipe, int count)
    : connection_(connection), pipe_(pipe) {
    for (int i = 0; i < count; ++i)
        ring_.push_back(std::make_unique<UsbTransfer>(connection.handle(), pipe));
}

UsbTransfers::~UsbTransfers() {
    if (callBack())
        return;
    for (std::unique_ptr<UsbTransfer>& transfer : ring_)
        if (transfer->isUnderWay())
            connection_.keepUntilClosed(std::move(transfer));
}

UsbTransfer* UsbTransfers::idle() {
    if (inUse_ == ring_.size())
        return nullptr;
    return ring_[(oldest_ + inUse_) % ring_.size()].get();
}

UsbStatus UsbTransfers::submit() {
    const UsbStatus status = connection_.note(idle()->submit());
    if (status == UsbStatus::Success)
        ++inUse_;
    return status;
}

UsbTransfer* UsbTransfers::ended() {
    UsbTransfer* const oldest = ring_[oldest_].get();
    return inUse_ > 0 && !oldest->isUnderWay() ? oldest : nullptr;
}

void UsbTransfers::take() {
    oldest_ = (oldest_ + 1) % ring_.size();
    --inUse_;
}

bool UsbTransfers::callBack() {
    using namespace std::chrono;
    for (const std::unique_ptr<UsbTransfer>& transfer : ring_)
        if (transfer->isUnderWay())
            transfer->cancel();
    const auto end = steady_clock::now() + seconds(1);
    while (areUnderWay()) {
        const auto left = duration_cast<microseconds>(end - steady_clock::now());
        if (left.count() <= 0 || connection_.wait(left.count()) != UsbStatus::Success)
            return false;
    }
    return true;
}

UsbStatus UsbTransfers::clearHalt() {
    callBack();
    return connection_.note(libusb_clear_halt(connection_.handle(), pipe_.address));
}

bool UsbTransfers::areUnderWay() const {
    return std::any_of(ring_.begin(), ring_.end(),
                       [](const auto& transfer) { return transfer->isUnderWay(); });
}

} // namespace bitlux
