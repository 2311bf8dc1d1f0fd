#include "apps/terminal_desk.h"

namespace bitlux {

MessageBox::Answer TerminalBoxes::show(const MessageBox& box) {
    shown_ = true;
    print(box);
    return cautiousAnswer(box.buttons);
}

void TerminalBoxes::print(const MessageBox& box) {
    if (where)
        errors_ << where();
    for (const char c : box.text)
        if (c != '\r')
            errors_ << c;
    errors_ << '\n';
}

} // namespace bitlux
