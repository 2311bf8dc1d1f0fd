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
/// command. Frames never overlap, since a call waits for the answer before it returns, and an
/// answer that comes too late is never taken for that of another frame. A dongle that was pulled
/// out is looked for once before each frame.
class DongleLink {
public:
    /// What a search found.
    enum class Found { None, Opened, NotOpened };

    /// By which a dongle tells that it is one.
    static constexpr std::string_view deviceInterfaceClass =
        "{4B322AC1-ECA3-46d6-8783-4640FE49B4B3}";
    /// How long the answer to a command may take, in nanoseconds.
    static constexpr std::int64_t answerLimit = 500'000'000;
    /// How long an answer that missed its limit is waited for before the next frame goes out. After
    /// that the dongle is reset, so that it can come no more.
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

    /// How the answer to a frame is waited for.
    enum class Wait : std::uint8_t {
        Unlimited,
        Limited, ///< at most answerLimit
        Quiet,   ///< the same, and an answer that does not come is no failure
    };

    /// Sends a frame and waits for its answer. False when none came; unless the wait was quiet, the
    /// link has failed then. Words and the commands of all panels go this way.
    bool exchange(const UsbFrame& frame, UsbFrame& answer, Wait wait);

    /// The same with a limited wait; the loop has a turn before each look for the answer, so that
    /// handlers run. When one sends a frame, this one's answer is waited for first, and kept.
    /// When one closes the link, no answer comes, which is no failure.
    bool exchangeInTurns(const UsbFrame& frame, UsbFrame& answer, EventLoop& loop);

    /// Samples the interrupt and reset lines of the chip into InterruptSeen and ResetSeen. Does
    /// nothing without a dongle.
    void read_rstint();

    /// The link failed and the user was told: whatever sends by itself stops.
    Event<> failed;

    /// The dongle is there, as far as a search or a transfer has told.
    [[nodiscard]] bool isPresent() const { return isPresent_; }
    /// How often it has gone.
    [[nodiscard]] unsigned losses() const { return losses_; }
    /// Finds out whether it is still there; sends nothing, and takes no answer that is waited for.
    void checkPresence();
    /// isPresent() is another.
    Event<> presenceChanged;

    /// Tells of every frame from now on; the listener outlives the recording.
    void startRecording(WireListener& listener, const Clock& clock);
    void stopRecording() { listener_ = nullptr; }

    /// Takes the status of a call and does nothing with it: the place for a report to come.
    static void ShowError(UsbStatus status);

private:
    enum class Outcome : std::uint8_t { Answered, TimedOut, Broken, Closed };

    /// A frame that went out.
    struct Sent {
        std::int64_t start;                ///< when it did
        std::optional<std::int64_t> limit; ///< how long its answer may take
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
    bool isGone_ = false;                   ///< the dongle that was open
    bool isPresent_ = false;
    unsigned losses_ = 0;
    Sent* waiting_ = nullptr;    ///< the frame whose wait lets handlers run
    int late_ = 0;               ///< answers that missed their limit
    std::int64_t lateUntil_ = 0; ///< when they are no longer waited for
    WireListener* listener_ = nullptr;
    const Clock* listenerClock_ = nullptr;
};

} // namespace bitlux
