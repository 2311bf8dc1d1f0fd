#include "apps/terminal_desk.h"

#include <chrono>
#include <thread>

namespace bitlux {

MessageBox::Answer TerminalBoxes::show(const MessageBox& box) {
    shown_ = true;
    for (const char c : box.text)
        if (c != '\r')
            errors_ << c;
    errors_ << '\n';
    return cautiousAnswer(box.buttons);
}

void NoEvents::waitForEvents(std::int64_t nanoseconds) {
    std::this_thread::sleep_for(std::chrono::nanoseconds(nanoseconds));
}

} // namespace bitlux
