#pragma once

#include "platform/event.h"
#include "session/live_options.h"
#include "session/session.h"
#include "transfer/dongle_link.h"
#include "transfer/failure_boxes.h"
#include "transfer/pin_layer.h"
#include "transfer/sent_words.h"

#include <memory>

namespace bitlux {

/// Every SPI word passes through here.
class WordEngine {
public:
    /// What the engine works with; all outlive it.
    struct Parts {
        Session& session;
        const LiveOptions& options;
        PinLayer& pins;
        DongleLink& dongle;
        FailureBoxes& failures;
    };

    explicit WordEngine(const Parts& parts)
        : session_(parts.session),
          options_(parts.options),
          pins_(parts.pins),
          dongle_(parts.dongle),
          failures_(parts.failures) {}

    /// Sends Session::WordToSend in the shape that the session defines and stores the answer in
    /// Session::WordReceived. The caller provides WordToSend with at least SPIWordLength elements,
    /// each 0 or 1.
    ///
    /// A failed transfer shows its message, raises sendFailed and returns with WordAnswered false;
    /// a word length below 1, a type outside 1 to 8 or a WordToSend that is too short raises
    /// Failure (OutOfRange) before anything moves. Does not run the event loop.
    ///
    /// Through the dongle a word may have whole bytes in its elements 0, 8, ..., each with the
    /// seven elements above it at 0; the port refuses such a word.
    void SendSPI();

    /// Whether the next word goes through the dongle: it is selected, and it is present.
    [[nodiscard]] bool usesDongle() const { return session_.USBReady && options_.useUsb(); }
    /// Raises Failure (OutOfRange), with a sentence for the user, when the next word goes through
    /// the dongle and has a length that its frame cannot carry completely.
    void requireCarriedLength() const;

    /// From now on the data of the words is kept.
    void keepWords(const Clock& clock) { sentWords_ = std::make_unique<SentWords>(clock); }
    /// Null while no words are kept.
    [[nodiscard]] const SentWords* sentWords() const { return sentWords_.get(); }
    /// The list of the kept words begins with the next one.
    void restartWords() {
        if (sentWords_)
            sentWords_->restart();
    }

    /// Callers that send many words begin a run on it.
    [[nodiscard]] FailureBoxes& failures() const { return failures_; }

    /// A transfer on the port failed: automatic senders stop. (The dongle link raises its own
    /// event.)
    Event<> sendFailed;
    /// A word is about to be sent on either bus; lets recorders separate its accesses from earlier
    /// ones.
    Event<> wordStarting;
    /// A word is about to be sent to the dongle: open panels show it.
    Event<> wordLeaving;
    /// A word was sent and WordReceived holds the answer: open panels show it.
    Event<> wordTransferred;

private:
    void requireSendable() const;
    void sendThroughDongle();
    void sendOnParallelPort();
    void failOnPort();
    void clearAnswer();
    [[nodiscard]] bool decode();
    void finish();
    void fail(const std::string& text);

    Session& session_;
    const LiveOptions& options_;
    PinLayer& pins_;
    DongleLink& dongle_;
    FailureBoxes& failures_;
    std::unique_ptr<SentWords> sentWords_;
};

} // namespace bitlux
