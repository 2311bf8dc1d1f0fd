#include "bench/simulated_dongle.h"

#include "bench/dongle_word.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace bitlux {

/// A connection to the dongle of the bench.
class SimulatedEndpoint : public UsbEndpoint {
public:
    explicit SimulatedEndpoint(SimulatedDongle& dongle) : dongle_(dongle) {}

    int enumerate(std::string_view) override {
        dongle_.catchUp();
        return dongle_.plugged() ? 1 : 0;
    }
    UsbStatus open(int index) override {
        if (index != 0 || !dongle_.plugged())
            return UsbStatus::Gone;
        if (dongle_.faults_.refusesOpening())
            return UsbStatus::Busy;
        plugging_ = dongle_.plugging_;
        return UsbStatus::Success;
    }
    UsbStatus addInterface(int number, int alternateSetting) override {
        return number == 0 && alternateSetting == 0 ? state() : UsbStatus::Failed;
    }
    UsbStatus setConfiguration(int index) override {
        return index == 0 ? state() : UsbStatus::Failed;
    }
    UsbStatus bind(std::uint8_t endpointAddress) override {
        pipe_ = endpointAddress;
        return state();
    }
    UsbStatus resetPipe() override { return state(); }
    UsbStatus startReading(const UsbBuffers&) override { return started(pipe_ == 0x81); }
    UsbStatus startWriting(const UsbBuffers&) override { return started(pipe_ == 0x02); }
    UsbStatus write(const UsbFrame& frame) override {
        return running() ? dongle_.take(frame) : notRunning();
    }
    UsbStatus read(UsbFrame& frame, std::int64_t wait) override {
        if (!running())
            return notRunning();
        const UsbStatus status = dongle_.give(frame, wait);
        return state() == UsbStatus::Success ? status : UsbStatus::Gone;
    }
    UsbStatus resetDevice() override {
        started_ = false;
        dongle_.answers_.clear();
        dongle_.refused_ = false;
        return state();
    }
    UsbStatus stopReading() override { return stopped(); }
    UsbStatus stopWriting() override { return stopped(); }
    UsbStatus removeInterface() override { return state(); }
    UsbStatus leaveConfiguration() override { return state(); }
    void close() override { plugging_ = closed; }

private:
    static constexpr int closed = 0;

    [[nodiscard]] UsbStatus state() const {
        if (plugging_ == closed)
            return UsbStatus::NotSetUp;
        return dongle_.plugged() && dongle_.plugging_ == plugging_ ? UsbStatus::Success
                                                                   : UsbStatus::Gone;
    }
    [[nodiscard]] bool running() const { return started_ && state() == UsbStatus::Success; }
    [[nodiscard]] UsbStatus notRunning() const {
        return state() == UsbStatus::Gone ? UsbStatus::Gone : UsbStatus::NotSetUp;
    }
    UsbStatus started(bool rightPipe) {
        started_ = rightPipe && state() == UsbStatus::Success;
        return rightPipe ? state() : UsbStatus::NotSetUp;
    }
    UsbStatus stopped() {
        started_ = false;
        return state();
    }

    SimulatedDongle& dongle_;
    int plugging_ = closed;
    std::uint8_t pipe_ = 0;
    bool started_ = false;
};

SimulatedDongle::SimulatedDongle(BenchClock& clock, std::shared_ptr<Device> device)
    : clock_(clock), board_(clock, std::move(device)) {}

std::unique_ptr<UsbEndpoint> SimulatedDongle::makeEndpoint() {
    return std::make_unique<SimulatedEndpoint>(*this);
}

void SimulatedDongle::plug() {
    backAt_ = 0;
    if (plugged_)
        return;
    plugged_ = true;
    ++plugging_;
    board_.powerUp();
}

void SimulatedDongle::unplug() {
    catchUp();
    board_.powerDown();
    backAt_ = 0;
    plugged_ = false;
    answers_.clear();
    refused_ = babbles_ = false;
}

void SimulatedDongle::catchUp() {
    if (backAt_ != 0 && clock_.nanoseconds() >= backAt_)
        plug();
    board_.catchUp();
}

UsbStatus SimulatedDongle::take(const UsbFrame& frame) {
    catchUp();
    const DongleFault fault = faults_.next();
    refused_ = fault.kind == DongleFault::Kind::Stalled;
    if (refused_)
        return UsbStatus::Success;
    lastOut_ = frame;
    if (fault.kind == DongleFault::Kind::Gone) {
        unplug();
        if (fault.duration > 0)
            backAt_ = clock_.nanoseconds() + fault.duration;
        return UsbStatus::Success;
    }
    babbles_ = babbles_ || fault.kind == DongleFault::Kind::Babbling;
    const UsbFrame answer = board_.execute(frame);
    if (fault.kind == DongleFault::Kind::Silent)
        return UsbStatus::Success;
    const DongleFrame read(frame);
    std::int64_t due = clock_.nanoseconds() + 2 * transferTime + read.length * read.bitTime;
    if (fault.kind == DongleFault::Kind::Late)
        due += fault.duration;
    if (!answers_.empty()) // frames are answered in their order
        due = std::max(due, answers_.back().due);
    const bool isShort = fault.kind == DongleFault::Kind::Short;
    answers_.push_back({due, answer, isShort ? fault.bytes : static_cast<int>(answer.size())});
    return UsbStatus::Success;
}

UsbStatus SimulatedDongle::give(UsbFrame& frame, std::int64_t wait) {
    if (std::exchange(refused_, false))
        return UsbStatus::Failed;
    if (babbles_ && answers_.empty()) {
        frame = lastIn_;
        return UsbStatus::Success;
    }
    const std::int64_t deadline = clock_.nanoseconds() + wait;
    const std::int64_t next =
        answers_.empty() ? deadline : std::min(answers_.front().due, deadline);
    clock_.idle(next - clock_.nanoseconds());
    if (answers_.empty() || clock_.nanoseconds() < answers_.front().due) {
        // On a clock that jumps, waiting for what never comes would keep the processor busy.
        if (wait > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return UsbStatus::NothingRead;
    }
    const Answer answer = answers_.front();
    answers_.pop_front();
    if (answer.bytes != static_cast<int>(answer.frame.size()))
        return UsbStatus::NoFrame;
    frame = lastIn_ = answer.frame;
    return UsbStatus::Success;
}

} // namespace bitlux
