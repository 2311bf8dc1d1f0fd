#pragma once

#include "chips/description.h"
#include "platform/scoped_value.h"
#include "session/session.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

#include <cstdint>
#include <vector>

namespace bitlux {

/// Sends words of a chip outside of its panel. While it exists, the session has the shape of the
/// chip's words; the clock of the port rests at the idle level of their type.
class ChipExchange {
public:
    /// All outlive it. Raises Failure (OutOfRange) when the dongle is chosen and its frame cannot
    /// carry words of this length.
    ChipExchange(const chips::WordFormat& format, Session& session, WordEngine& engine,
                 PinLayer& pins);
    ChipExchange(const ChipExchange&) = delete;
    ChipExchange& operator=(const ChipExchange&) = delete;

    /// The answer that comes with the word. Without one, after the message of the link, raises
    /// Failure (LinkFailed).
    std::uint64_t operator()(std::uint64_t word);

private:
    /// Brings the clock to rest at the end, when the session has its own type again.
    class Rest {
    public:
        Rest(const Session& session, PinLayer& pins, bool isNeeded)
            : session_(session), pins_(pins), isNeeded_(isNeeded) {}
        ~Rest();
        Rest(const Rest&) = delete;
        Rest& operator=(const Rest&) = delete;
        void apply();

    private:
        const Session& session_;
        PinLayer& pins_;
        bool isNeeded_;
    };

    const chips::WordFormat& format_;
    Session& session_;
    WordEngine& engine_;
    Rest rest_; ///< before the values that it waits for
    ScopedValue<std::int16_t> type_;
    ScopedValue<std::int16_t> length_;
    ScopedValue<Flag> order_;
    ScopedValue<std::vector<std::int16_t>> word_;
};

} // namespace bitlux
