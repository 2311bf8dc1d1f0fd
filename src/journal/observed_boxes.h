#pragma once

#include "platform/desk.h"
#include "platform/event.h"

namespace bitlux {

/// Message boxes that announce each box before it is shown.
class ObservedBoxes : public MessageBoxes {
public:
    /// `boxes` outlives this.
    explicit ObservedBoxes(MessageBoxes& boxes) : boxes_(boxes) {}

    MessageBox::Answer show(const MessageBox& box) override {
        showing.raise(box);
        return boxes_.show(box);
    }

    Event<const MessageBox&> showing;

private:
    MessageBoxes& boxes_;
};

} // namespace bitlux
