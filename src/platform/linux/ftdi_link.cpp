#include "platform/linux/ftdi_link.h"

#include "platform/failure.h"
#include "platform/printable.h"

#include <utility>

#include <fmt/format.h>

namespace bitlux {

FtdiLink::FtdiLink(const Adapter& adapter, std::unique_ptr<FtdiConnection> connection,
                   const FtdiRate& rate, std::chrono::nanoseconds timeout)
    : name_(printable(adapter.name(), longestAdapterName)),
      keepsLines_(adapter.keepsLines),
      rate_(rate),
      timeout_(timeout),
      connection_(std::move(connection)) {
    if (!connection_->start(rate.baud))
        failRefused();
}

FtdiLink::~FtdiLink() {
    if (!keepsLines_ && connection_->status() == UsbStatus::Success)
        connection_->leave();
}

void FtdiLink::drive(std::uint8_t outputs) {
    demandUsable();
    if (!connection_->drive(outputs))
        failRefused();
    if (!levels_)
        return;
    // A chip may forget what was written when its mode is set.
    std::uint8_t ignored = 0;
    const std::uint8_t levels = *levels_;
    exchange({&levels, 1}, {&ignored, 1});
}

void FtdiLink::exchange(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> samples) {
    demandUsable();
    const std::chrono::duration<double> onTheWire(static_cast<double>(bytes.size()) / rate_.bytes);
    const auto waits = std::chrono::duration_cast<std::chrono::nanoseconds>(onTheWire) + timeout_;
    const UsbStatus status = connection_->exchange(bytes, samples, waits.count());
    if (status != UsbStatus::Success)
        failExchange(status, bytes.size());
    levels_ = bytes.back();
}

void FtdiLink::demandUsable() const {
    if (!failure_.empty())
        throw Failure(Failure::Kind::PortUnusable, failure_);
}

void FtdiLink::fail(std::string text) {
    failure_ = std::move(text);
    throw Failure(Failure::Kind::PortUnusable, failure_);
}

void FtdiLink::failRefused() {
    if (connection_->isGone())
        failExchange(UsbStatus::Gone, 0);
    fail(fmt::format("The adapter {} refuses to be set up. Unplug it and plug it in again, then "
                     "try again.",
                     name_));
}

void FtdiLink::failExchange(UsbStatus status, std::size_t bytes) {
    const std::size_t received = connection_->received();
    if (status == UsbStatus::Gone)
        fail(fmt::format("The adapter {} was lost while in use: it was removed. Check that it is "
                         "plugged in, then try again.",
                         name_));
    const std::string what =
        status == UsbStatus::NoFrame       ? "has sent more samples than it was asked for"
        : status != UsbStatus::NothingRead ? "has broken off the transfer"
        : received == 0                    ? "does not answer"
                        : fmt::format("has sent {} of {} samples and no more", received, bytes);
    fail(fmt::format("The adapter {} {}. Unplug it and plug it in again, then try again.", name_,
                     what));
}

} // namespace bitlux
