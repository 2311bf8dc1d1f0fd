#include "apps/terminal_desk.h"

namespace bitlux {

MessageBox::Answer TerminalBoxes::show(const MessageBox& box) {
    shown_ = true;
    for (const char c : box.text)
        if (c != '\r')
            errors_ << c;
    errors_ << '\n';
    return cautiousAnswer(box.buttons);
}

} // namespace bitlux
