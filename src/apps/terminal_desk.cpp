#include "apps/terminal_desk.h"

namespace bitlux {

MessageBox::Answer TerminalBoxes::show(const MessageBox& box) {
    shown_ = shown_ || !isNotice(box);
    print(box);
    return cautiousAnswer(box.buttons);
}

void TerminalBoxes::print(const MessageBox& box) {
    for (const char c : box.text)
        if (c != '\r')
            errors_ << c;
    errors_ << '\n';
}

} // namespace bitlux
