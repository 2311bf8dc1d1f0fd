#pragma once

#include "chips/description.h"
#include "session/session.h"

#include <functional>
#include <string>

namespace bitlux {

/// The shape of words that a panel holds for the whole program.
class HeldShape {
public:
    /// `active` names the session's variable that is 1 while the shape is held; none when it is
    /// empty. Raises Failure (OutOfRange) for a name that no variable has. All outlive it.
    /// `typeChanged` is told of every change.
    HeldShape(
        Session& session, const chips::WordFormat& format, const std::string& active,
        std::function<void()> typeChanged = [] {});

    /// Words of the chip's length, all 0, in its type from now on.
    void take();
    /// What was applied last is in force again, whatever was before this panel.
    void giveBack();
    /// Takes it anew where it is held and something has changed it.
    void keep();

private:
    Session& session_;
    const chips::WordFormat& format_;
    std::uint8_t* active_;
    std::function<void()> typeChanged_;
    bool held_ = false;
};

} // namespace bitlux
