#include "apps/terminal_desk.h"

#include "platform/printable.h"

#include <string_view>

namespace bitlux {

MessageBox::Answer TerminalBoxes::show(const MessageBox& box) {
    shown_ = shown_ || !isNotice(box);
    print(box);
    return cautiousAnswer(box.buttons);
}

void TerminalBoxes::print(const MessageBox& box) {
    if (where)
        errors_ << printable(where());
    // A name from a file may contain control characters.
    constexpr std::string_view ending = lineBreak;
    std::string_view rest = box.text;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = rest.find(ending);
        errors_ << printable(rest.substr(0, end)) << '\n';
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + ending.size());
    }
    if (!box.hint.empty())
        errors_ << box.hint << '\n';
}

} // namespace bitlux
