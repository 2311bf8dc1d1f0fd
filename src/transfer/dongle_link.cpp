#include "transfer/dongle_link.h"

#include "platform/dongle_commands.h"
#include "platform/scoped_value.h"
#include "transfer/dongle_frame.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

constexpr std::uint8_t inPipe = 0x81;
constexpr std::uint8_t outPipe = 0x02;
constexpr UsbBuffers buffers{.size = 8, .count = 3, .errorsAllowed = 5};

/// Unexpected frames; a dongle that sends more does not stop by itself.
constexpr int mostUnasked = 64;

/// The transport is asked again when this has passed; it ends no wait.
constexpr std::int64_t endlessWait = 3'600'000'000'000;

/// Between two turns of the event loop.
constexpr std::int64_t turnInterval = 10'000'000;

bool isAnswer(UsbStatus status) {
    return status == UsbStatus::Success || status == UsbStatus::NoFrame;
}

} // namespace

DongleLink::Found DongleLink::search() {
    settleWaiting();
    close();
    Endpoint1 = host_.makeEndpoint();
    Endpoint2 = host_.makeEndpoint();
    const Found found = openFirst();
    setPresent(found == Found::Opened);
    return found;
}

DongleLink::Found DongleLink::openFirst() {
    if (Endpoint1->enumerate(deviceInterfaceClass) < 1)
        return Found::None;
    const UsbStatus reading = Endpoint1->open(0);
    const UsbStatus writing = Endpoint2->open(0);
    return reading == UsbStatus::Success && writing == UsbStatus::Success ? Found::Opened
                                                                          : Found::NotOpened;
}

void DongleLink::setPresent(bool present) {
    if (isPresent_ == present)
        return;
    isPresent_ = present;
    if (!present)
        ++losses_;
    presenceChanged.raise();
}

void DongleLink::checkPresence() {
    if (isPresent_ && waiting_ == nullptr)
        drain();
}

void DongleLink::setUpPipes() {
    ShowError(Endpoint1->addInterface(0, 0));
    ShowError(Endpoint1->setConfiguration(0));
    ShowError(Endpoint1->bind(inPipe));
    ShowError(Endpoint1->resetPipe());
    ShowError(Endpoint1->startReading(buffers));
    ShowError(Endpoint2->bind(outPipe));
    ShowError(Endpoint2->startWriting(buffers));
}

void DongleLink::close() {
    isGone_ = false;
    if (!Endpoint1)
        return;
    if (waiting_ != nullptr && !waiting_->outcome) {
        waiting_->outcome = Outcome::Closed;
        missAnswer(clock_.nanoseconds() + lateAnswerLimit);
    }
    ShowError(Endpoint2->stopWriting());
    ShowError(Endpoint1->stopReading());
    ShowError(Endpoint1->removeInterface());
    ShowError(Endpoint1->leaveConfiguration());
    Endpoint1->close();
    Endpoint2->close();
}

bool DongleLink::exchange(const UsbFrame& frame, UsbFrame& answer, Wait wait) {
    const auto limit = wait == Wait::Unlimited ? std::nullopt : std::optional(answerLimit);
    return conclude(attempt(frame, answer, limit, nullptr), wait);
}

bool DongleLink::exchangeInTurns(const UsbFrame& frame, UsbFrame& answer, EventLoop& loop) {
    return conclude(attempt(frame, answer, answerLimit, &loop), Wait::Limited);
}

bool DongleLink::conclude(Outcome outcome, Wait wait) {
    session_.USBReadDone = false;
    const bool isMissing = outcome == Outcome::TimedOut || outcome == Outcome::Broken;
    if (isMissing && wait != Wait::Quiet)
        fail();
    return outcome == Outcome::Answered;
}

void DongleLink::read_rstint() {
    if (!session_.USBReady)
        return;
    UsbFrame lines{};
    if (!exchange(commandFrame(dongle::readLines), lines, Wait::Unlimited))
        return;
    session_.InterruptSeen = (lines[frameData] & 1) != 0;
    session_.ResetSeen = (lines[frameData] & 2) == 0;
}

DongleLink::Outcome DongleLink::attempt(const UsbFrame& frame, UsbFrame& answer,
                                        std::optional<std::int64_t> limit, EventLoop* loop) {
    settleWaiting();
    if (!isReady())
        return Outcome::Broken;
    session_.USBReadDone = false;
    record(WireAccess::Kind::FrameOut, frame);
    const UsbStatus status = noteGone(Endpoint2->write(frame));
    ShowError(status);
    // A frame that did not go out has no answer that could be waited for.
    if (status != UsbStatus::Success)
        return Outcome::Broken;
    Sent sent{.start = clock_.nanoseconds(), .limit = limit, .outcome = {}};
    try {
        awaitAnswer(sent, loop);
    } catch (...) { // the wait was interrupted; the answer may still come
        if (!sent.outcome)
            missAnswer(clock_.nanoseconds() + lateAnswerLimit);
        throw;
    }
    if (sent.outcome == Outcome::Answered)
        answer = sent.answer;
    return *sent.outcome;
}

void DongleLink::awaitAnswer(Sent& sent, EventLoop* loop) {
    const ScopedValue waiting(waiting_, loop != nullptr ? &sent : waiting_);
    while (!sent.outcome) {
        if (loop != nullptr)
            loop->turn();
        if (!sent.outcome)
            look(sent, loop != nullptr ? turnInterval : endlessWait);
    }
}

/// Reads once, and waits no longer than asked.
void DongleLink::look(Sent& sent, std::int64_t longest) {
    const std::int64_t left =
        sent.limit ? std::max<std::int64_t>(sent.start + *sent.limit - clock_.nanoseconds(), 0)
                   : endlessWait;
    const UsbStatus status = read(sent.answer, std::min(left, longest));
    if (status == UsbStatus::Success) {
        sent.outcome = Outcome::Answered;
    } else if (status != UsbStatus::NothingRead) {
        if (status == UsbStatus::Failed)
            missAnswer(sent.start);
        sent.outcome = Outcome::Broken;
    } else if (left == 0) {
        missAnswer(sent.start + lateAnswerLimit);
        sent.outcome = Outcome::TimedOut;
    }
}

/// Waits for the answer that a caller further down the stack expects, or for its time-out.
void DongleLink::settleWaiting() {
    while (waiting_ != nullptr && !waiting_->outcome)
        look(*waiting_, endlessWait);
}

void DongleLink::missAnswer(std::int64_t until) {
    ++late_;
    lateUntil_ = until;
}

UsbStatus DongleLink::read(UsbFrame& frame, std::int64_t wait) {
    const UsbStatus status = noteGone(Endpoint1->read(frame, wait));
    if (status == UsbStatus::Success)
        record(WireAccess::Kind::FrameIn, frame);
    return status;
}

/// Whether a frame can go out, and nothing else can pass for its answer.
bool DongleLink::isReady() {
    if (!Endpoint1)
        return false;
    const bool isQuiet = isGone_ || settleLateAnswers() != UsbStatus::Success;
    return isGone_ ? reconnect() : isQuiet;
}

bool DongleLink::reconnect() {
    isGone_ = search() != Found::Opened;
    if (isGone_)
        return false;
    setUpPipes();
    late_ = 0; // that was another link
    session_.LinkFailed = false;
    return true;
}

/// Success when frames come without end, else why none comes.
UsbStatus DongleLink::settleLateAnswers() {
    const UsbStatus status = drain();
    UsbFrame old{};
    while (late_ > 0) {
        const std::int64_t left = lateUntil_ - clock_.nanoseconds();
        if (left <= 0 || !isAnswer(read(old, left)))
            break;
        --late_;
    }
    if (late_ == 0 && status != UsbStatus::Success)
        return status;
    ShowError(Endpoint1->resetDevice());
    setUpPipes();
    late_ = 0;
    return drain();
}

UsbStatus DongleLink::drain() {
    UsbFrame old{};
    for (int n = 0; n < mostUnasked; ++n) {
        const UsbStatus status = read(old, 0);
        if (!isAnswer(status))
            return status;
        late_ = std::max(late_ - 1, 0);
    }
    return UsbStatus::Success;
}

UsbStatus DongleLink::noteGone(UsbStatus status) {
    if (status == UsbStatus::Gone) {
        isGone_ = true;
        setPresent(false);
    }
    return status;
}

void DongleLink::fail() {
    session_.LinkFailed = true;
    boxes_.show({.text = "Check the USB cable and restart program"});
    failed.raise();
}

void DongleLink::startRecording(WireListener& listener, const Clock& clock) {
    listener_ = &listener;
    listenerClock_ = &clock;
}

void DongleLink::record(WireAccess::Kind kind, const UsbFrame& frame) {
    if (listener_ != nullptr)
        listener_->add(
            {.nanoseconds = listenerClock_->nanoseconds(), .kind = kind, .frame = frame});
}

void DongleLink::ShowError(UsbStatus) {}

} // namespace bitlux
