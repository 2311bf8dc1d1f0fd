#pragma once

#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "platform/usb_endpoint.h"
#include "session/session.h"
#include "transfer/wire_trace.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace bitlux {

/// The link to the dongle: two connections, one frame out and one frame back for each word or
/// command. Frames never overlap, since a call waits for the answer before it returns, and a late
/// answer is never taken for that of another frame. Before each frame, a dongle that was unplugged
/// is searched for once.
class DongleLink {
public:
    /// Result of a search.
    enum class Found { None, Opened, NotOpened };

    /// The device interface class by which a dongle identifies itself.
    static constexpr std::string_view deviceInterfaceClass =
        "{4B322AC1-ECA3-46d6-8783-4640FE49B4B3}";
    /// Time-out for the answer to a command, in nanoseconds.
    static constexpr std::int64_t answerLimit = 500'000'000;
    /// How long the link waits for a late answer before it sends the next frame. Then it resets the
    /// dongle, so that the answer cannot arrive any more.
    static constexpr std::int64_t lateAnswerLimit = 2'000'000'000;

    /// All outlive the link.
    DongleLink(Session& session, UsbHost& host, const Clock& clock, MessageBoxes& boxes)
        : session_(session), host_(host), clock_(clock), boxes_(boxes) {}

    /// Closes what was open, looks for dongles and opens the first.
    Found search();
    /// Sets up the pipes of the dongle that was opened.
    void setUpPipes();
    /// Stops both pipes and closes the dongle; harmless when none is open.
    void close();

    /// How to wait for the answer to a frame.
    enum class Wait : std::uint8_t {
        Unlimited,
        Limited, ///< at most answerLimit
        Quiet,   ///< the same, and a missing answer is not a failure
    };

    /// Sends a frame and waits for its answer. False when none came; unless the wait was quiet, the
    /// link has failed then. Words and the commands of all panels are sent this way.
    bool exchange(const UsbFrame& frame, UsbFrame& answer, Wait wait);

    /// The same with a limited wait. The event loop runs before each look for the answer, so that
    /// handlers are called. When a handler sends a frame, the link first waits for the answer to
    /// this one, and keeps it. When a handler closes the link, no answer comes, which is not a
    /// failure.
    bool exchangeInTurns(const UsbFrame& frame, UsbFrame& answer, EventLoop& loop);

    /// Samples the interrupt and reset lines of the chip into InterruptSeen and ResetSeen. Does
    /// nothing without a dongle.
    void read_rstint();

    /// The link failed and a message was shown: automatic senders stop.
    Event<> failed;

    /// Whether the dongle is present, as of the last search or transfer.
    [[nodiscard]] bool isPresent() const { return isPresent_; }
    /// How often it was lost.
    [[nodiscard]] unsigned losses() const { return losses_; }
    /// Checks whether it is still present; sends nothing, and consumes no expected answer.
    void checkPresence();
    /// isPresent() has changed.
    Event<> presenceChanged;

    /// Reports every frame from now on; the listener outlives the recording.
    void startRecording(WireListener& listener, const Clock& clock);
    void stopRecording() { listener_ = nullptr; }

    /// Receives the status of a call and ignores it: the place for a future report.
    static void ShowError(UsbStatus status);

private:
    enum class Outcome : std::uint8_t { Answered, TimedOut, Broken, Closed };

    /// A frame that was sent.
    struct Sent {
        std::int64_t start;                ///< when it was sent
        std::optional<std::int64_t> limit; ///< time-out of its answer
        std::optional<Outcome> outcome;    ///< once it is known
        UsbFrame answer{};
    };

    Found openFirst();
    Outcome attempt(const UsbFrame& frame, UsbFrame& answer, std::optional<std::int64_t> limit,
                    EventLoop* loop);
    void awaitAnswer(Sent& sent, EventLoop* loop);
    void look(Sent& sent, std::int64_t longest);
    void settleWaiting();
    bool conclude(Outcome outcome, Wait wait);
    void missAnswer(std::int64_t until);
    UsbStatus read(UsbFrame& frame, std::int64_t wait);
    bool isReady();
    bool reconnect();
    UsbStatus settleLateAnswers();
    UsbStatus drain();
    UsbStatus noteGone(UsbStatus status);
    void setPresent(bool present);
    void fail();
    void record(WireAccess::Kind kind, const UsbFrame& frame);

    Session& session_;
    UsbHost& host_;
    const Clock& clock_;
    MessageBoxes& boxes_;
    std::unique_ptr<UsbEndpoint> Endpoint1; ///< reads
    std::unique_ptr<UsbEndpoint> Endpoint2; ///< writes
    bool isGone_ = false;                   ///< the open dongle was lost
    bool isPresent_ = false;
    unsigned losses_ = 0;
    Sent* waiting_ = nullptr;    ///< the frame whose wait lets handlers run
    int late_ = 0;               ///< answers that missed their time-out
    std::int64_t lateUntil_ = 0; ///< when the link stops waiting for them
    WireListener* listener_ = nullptr;
    const Clock* listenerClock_ = nullptr;
};

} // namespace bitlux
