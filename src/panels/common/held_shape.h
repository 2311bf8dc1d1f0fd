#pragma once

#include "chips/description.h"
#include "session/session.h"

#include <functional>
#include <string>

namespace bitlux {

/// The shape of words that a panel holds for the whole program.
class HeldShape {
public:
    /// Takes length and type of the words as the panel says, and sets its variable of the session.
    /// Raises Failure (OutOfRange) for a name that no variable has. All outlive it.
    /// `typeChanged` is told of every change.
    HeldShape(
        Session& session, const chips::WordFormat& format, const chips::PanelLayout& panel,
        std::function<void()> typeChanged = [] {});

    /// Words of the chip's length, all 0, in its type from now on, where the panel holds that.
    void take();
    /// What was applied last is in force again, whatever was before this panel.
    void giveBack();
    /// Takes it anew where it is held and something has changed it.
    void keep();

private:
    Session& session_;
    const chips::WordFormat& format_;
    const bool leavesType_;
    std::uint8_t* active_;
    std::function<void()> typeChanged_;
    bool held_ = false;
};

} // namespace bitlux
