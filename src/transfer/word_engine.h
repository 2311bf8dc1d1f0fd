#pragma once

#include "platform/desk.h"
#include "platform/event.h"
#include "session/session.h"
#include "transfer/pin_layer.h"

namespace bitlux {

/// The one place through which every SPI word passes.
class WordEngine {
public:
    WordEngine(Session& session, PinLayer& pins, MessageBoxes& boxes)
        : session_(session), pins_(pins), boxes_(boxes) {}

    /// Sends Session::WordToSend in the shape that the session tells and leaves the answer in
    /// Session::WordReceived. The caller has made WordToSend with at least SPIWordLength elements,
    /// each 0 or 1.
    ///
    /// A failed transfer shows its message, raises sendFailed and returns; a word length below 1,
    /// a type outside 1 to 8 or a WordToSend that is too short raises Failure (OutOfRange) before
    /// anything moves. Gives no control to the event loop.
    void SendSPI();

    /// A transfer failed: whatever sends by itself stops.
    Event<> sendFailed;
    /// A word is through and WordReceived holds the answer: open panels show it.
    Event<> wordTransferred;

private:
    void requireSendable() const;
    void sendOnParallelPort();
    [[nodiscard]] bool decode();
    void fail(const std::string& text);

    Session& session_;
    PinLayer& pins_;
    MessageBoxes& boxes_;
};

} // namespace bitlux
