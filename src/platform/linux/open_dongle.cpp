#include "platform/linux/open_dongle.h"

#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace bitlux {

namespace {

constexpr int onlyInterface = 0;

UsbPipe pipeOf(std::uint8_t address, UsbCandidate::Transfer transfer) {
    const bool isBulk = transfer == UsbCandidate::Transfer::Bulk;
    return {address, isBulk ? LIBUSB_TRANSFER_TYPE_BULK : LIBUSB_TRANSFER_TYPE_INTERRUPT};
}

bool areUsable(const UsbBuffers& buffers) {
    return buffers.size == int{std::tuple_size_v<UsbFrame>} && buffers.count > 0;
}

/// Waits on a connection, at least once and until its time is up.
class TimedWait {
public:
    TimedWait(UsbConnection& connection, std::chrono::nanoseconds time)
        : connection_(connection), time_(time) {}

    /// False, without waiting, when the time was up at the time before.
    bool wait() {
        using namespace std::chrono;
        if (isOver_)
            return false;
        const nanoseconds left = time_ - (steady_clock::now() - start_);
        isOver_ = left.count() <= 0;
        status_ = connection_.wait(ceil<microseconds>(std::max(left, nanoseconds(0))).count());
        return true;
    }
    /// What the last waiting ended with.
    [[nodiscard]] UsbStatus status() const { return status_; }

private:
    UsbConnection& connection_;
    std::chrono::nanoseconds time_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    bool isOver_ = false;
    UsbStatus status_ = UsbStatus::Success;
};

} // namespace

OpenDongle::OpenDongle(const std::string& node, UsbCandidate candidate)
    : candidate_(std::move(candidate)), connection_(node), claimed_(connection_.status()) {
    if (claimed_ == UsbStatus::Success)
        claimed_ = claim();
}

OpenDongle::~OpenDongle() {
    stopReading();
    stopWriting();
    if (claimed_ == UsbStatus::Success)
        libusb_release_interface(connection_.handle(), onlyInterface);
}

UsbStatus OpenDongle::status() const {
    return claimed_ == UsbStatus::Success ? connection_.status() : claimed_;
}

UsbStatus OpenDongle::claim() {
    return connection_.note(libusb_claim_interface(connection_.handle(), onlyInterface));
}

UsbStatus OpenDongle::addInterface(int number, int alternateSetting) {
    if (number != onlyInterface)
        return UsbStatus::Failed;
    const UsbStatus status = chooseSetting(alternateSetting);
    hasInterface_ = hasInterface_ || status == UsbStatus::Success;
    return status;
}

UsbStatus OpenDongle::chooseSetting(int alternateSetting) {
    // Choosing it once more would end what is under way.
    if (setting_ == alternateSetting)
        return UsbStatus::Success;
    const UsbStatus status = connection_.note(
        libusb_set_interface_alt_setting(connection_.handle(), onlyInterface, alternateSetting));
    if (status == UsbStatus::Success)
        setting_ = alternateSetting;
    return status;
}

UsbStatus OpenDongle::setConfiguration(int index) {
    if (!hasInterface_)
        return UsbStatus::NotSetUp;
    if (index < 0 || index > UINT8_MAX)
        return UsbStatus::Failed;
    libusb_config_descriptor* descriptor = nullptr;
    const UsbStatus known = connection_.note(libusb_get_config_descriptor(
        libusb_get_device(connection_.handle()), static_cast<std::uint8_t>(index), &descriptor));
    if (known != UsbStatus::Success)
        return known;
    const int number = descriptor->bConfigurationValue;
    libusb_free_config_descriptor(descriptor);
    const UsbStatus status = expectActive(number);
    hasConfiguration_ = hasConfiguration_ || status == UsbStatus::Success;
    return status;
}

/// The pipes that were found belong to the active configuration. Setting it again would reset the
/// device, and another one is of no use.
UsbStatus OpenDongle::expectActive(int configuration) {
    int active = 0;
    const UsbStatus status =
        connection_.note(libusb_get_configuration(connection_.handle(), &active));
    if (status != UsbStatus::Success)
        return status;
    return configuration == active ? UsbStatus::Success : UsbStatus::Failed;
}

UsbStatus OpenDongle::removeInterface() {
    return undo(hasInterface_);
}

UsbStatus OpenDongle::leaveConfiguration() {
    return undo(hasConfiguration_);
}

UsbStatus OpenDongle::undo(bool& step) {
    stopReading();
    stopWriting();
    return std::exchange(step, false) ? UsbStatus::Success : UsbStatus::NotSetUp;
}

UsbStatus OpenDongle::clearHalt(std::uint8_t endpointAddress) {
    if (endpointAddress == dongleInEndpoint && reading_) {
        const UsbStatus status = reading_->clearHalt();
        return status == UsbStatus::Success ? queueAll() : status;
    }
    if (endpointAddress == dongleOutEndpoint && writing_)
        return writing_->clearHalt();
    return connection_.note(libusb_clear_halt(connection_.handle(), endpointAddress));
}

UsbStatus OpenDongle::reset() {
    stopReading();
    stopWriting();
    const int result = libusb_reset_device(connection_.handle());
    // Not found: it came back as another device, or without its interface.
    return connection_.note(result == LIBUSB_ERROR_NOT_FOUND ? LIBUSB_ERROR_NO_DEVICE : result);
}

UsbStatus OpenDongle::startReading(const UsbBuffers& buffers) {
    if (!isSetUp())
        return UsbStatus::NotSetUp;
    if (!areUsable(buffers))
        return UsbStatus::Failed;
    stopReading();
    reading_ = std::make_unique<UsbTransfers>(connection_, pipeOf(dongleInEndpoint, candidate_.in),
                                              buffers.count);
    readFailuresAllowed_ = buffers.errorsAllowed;
    readFailures_ = 0;
    return queueAll();
}

UsbStatus OpenDongle::startWriting(const UsbBuffers& buffers) {
    if (!isSetUp())
        return UsbStatus::NotSetUp;
    if (!areUsable(buffers))
        return UsbStatus::Failed;
    stopWriting();
    writing_ = std::make_unique<UsbTransfers>(
        connection_, pipeOf(dongleOutEndpoint, candidate_.out), buffers.count);
    writeFailed_ = false;
    return UsbStatus::Success;
}

UsbStatus OpenDongle::read(UsbFrame& frame, std::int64_t wait) {
    if (!reading_)
        return UsbStatus::NotSetUp;
    TimedWait waiting(connection_, std::chrono::nanoseconds(wait));
    do {
        if (const std::optional<UsbStatus> come = whatHasCome(frame))
            return *come;
        if (waiting.status() != UsbStatus::Success)
            return waiting.status();
    } while (waiting.wait());
    return UsbStatus::NothingRead;
}

UsbStatus OpenDongle::write(const UsbFrame& frame) {
    if (!writing_)
        return UsbStatus::NotSetUp;
    TimedWait waiting(connection_, std::chrono::seconds(1));
    do
        takeWritten();
    while (writing_->idle() == nullptr && waiting.wait());
    if (status() != UsbStatus::Success)
        return status();
    UsbTransfer* const transfer = writing_->idle();
    if (transfer == nullptr)
        return UsbStatus::Failed;
    transfer->frame = frame;
    return writing_->submit();
}

/// Submits every buffer for reading that is idle.
UsbStatus OpenDongle::queueAll() {
    UsbStatus status = UsbStatus::Success;
    while (status == UsbStatus::Success && reading_->idle() != nullptr)
        status = reading_->submit();
    return status;
}

/// Takes what was sent off and has ended.
void OpenDongle::takeWritten() {
    while (const UsbTransfer* transfer = writing_->ended()) {
        const UsbStatus outcome = transfer->outcome();
        writing_->take();
        if (outcome == UsbStatus::Gone) {
            connection_.note(LIBUSB_ERROR_NO_DEVICE);
        } else if (outcome != UsbStatus::Success && outcome != UsbStatus::NothingRead) {
            writeFailed_ = true;
            writing_->clearHalt(); // so that the next frame can go
        }
    }
}

/// The result of a read, or nothing while there is none.
std::optional<UsbStatus> OpenDongle::whatHasCome(UsbFrame& frame) {
    if (writing_)
        takeWritten();
    if (status() != UsbStatus::Success)
        return status();
    if (std::exchange(writeFailed_, false))
        return UsbStatus::Failed;
    while (const UsbTransfer* transfer = reading_->ended()) {
        const UsbStatus outcome = transfer->outcome();
        const bool isStalled = transfer->isStalled();
        if (outcome == UsbStatus::Success)
            frame = transfer->frame;
        reading_->take();
        if (const std::optional<UsbStatus> end = afterReading(outcome, isStalled))
            return end;
    }
    return std::nullopt;
}

/// Makes the pipe go on, and takes what the same halt has ended.
void OpenDongle::endHalt() {
    reading_->clearHalt();
    for (const UsbTransfer* next = reading_->ended(); next != nullptr && next->isStalled();
         next = reading_->ended())
        reading_->take();
}

/// Queues the taken transfer again. Returns the result of a read whose transfer ended so, if it is
/// complete.
std::optional<UsbStatus> OpenDongle::afterReading(UsbStatus outcome, bool isStalled) {
    if (outcome == UsbStatus::Gone)
        return connection_.note(LIBUSB_ERROR_NO_DEVICE);
    if (outcome == UsbStatus::Failed)
        endHalt();
    if (const UsbStatus queued = queueAll(); queued != UsbStatus::Success)
        return queued;
    if (outcome == UsbStatus::NothingRead)
        return std::nullopt;
    const bool mayYetCome = outcome == UsbStatus::Failed && !isStalled;
    if (mayYetCome && ++readFailures_ < readFailuresAllowed_)
        return std::nullopt;
    readFailures_ = 0;
    return outcome;
}

} // namespace bitlux
