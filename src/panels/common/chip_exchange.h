#pragma once

#include "chips/description.h"
#include "panels/common/panel_words.h"
#include "platform/desk.h"
#include "session/session.h"
#include "transfer/word_engine.h"

#include <cstdint>

namespace bitlux {

/// Sends words of a chip outside of its panel, each in the shape of the chip's words. The session
/// has its own shape back after each word.
class ChipExchange {
public:
    /// All outlive it.
    ChipExchange(const chips::Chip& chip, Session& session, WordEngine& engine, MessageBoxes& boxes)
        : session_(session), words_(chip.word, session, engine, boxes) {}

    /// The answer that comes with the word. Without one, after the message of the link, raises
    /// Failure (LinkFailed).
    std::uint64_t operator()(std::uint64_t word);

private:
    const Session& session_;
    PanelWords words_;
};

} // namespace bitlux
