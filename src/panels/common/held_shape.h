#pragma once

#include "chips/description.h"
#include "session/session.h"

#include <functional>
#include <string>

namespace bitlux {

/// The shape of words that a panel holds for the whole program.
class HeldShape {
public:
    /// Sets length and type of the words as the panel defines, and its variable of the session.
    /// Raises Failure (OutOfRange) for an unknown variable. All outlive it. `typeChanged` is called
    /// at every change.
    HeldShape(
        Session& session, const chips::WordFormat& format, const chips::PanelLayout& panel,
        std::function<void()> typeChanged = [] {});

    /// Words of the chip's length, all 0, in its type from now on, if the panel holds the type.
    void take();
    /// Restores what was applied last, regardless of the state before this panel.
    void restore();
    /// Sets it again if it is held and was changed.
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
