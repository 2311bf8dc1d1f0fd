#include "apps/terminal_desk.h"

namespace bitlux {

MessageBox::Answer TerminalBoxes::show(const MessageBox& box) {
    shown_ = true;
    for (const char c : box.text)
        if (c != '\r')
            errors_ << c;
    errors_ << '\n';
    switch (box.buttons) {
    case MessageBox::Buttons::OkCancel:
        return MessageBox::Answer::Cancel;
    case MessageBox::Buttons::YesNo:
        return MessageBox::Answer::No;
    case MessageBox::Buttons::Ok:
        break;
    }
    return MessageBox::Answer::Ok;
}

} // namespace bitlux
