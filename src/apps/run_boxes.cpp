#include "apps/run_boxes.h"

#include "sending/multiple_run.h"

#include <optional>
#include <string>

#include <unistd.h>

namespace bitlux {

MessageBox::Answer RunBoxes::show(const MessageBox& box) {
    if (printing)
        printing();
    if (isNotice(box) || passesMessages)
        return TerminalBoxes::show(box);
    const bool isPause = box.title == MultipleRun::pausedTitle;
    if (isPause && passesPauses) {
        print(box);
        return MessageBox::Answer::Ok;
    }
    if (isPause && isatty(STDIN_FILENO) == 1) {
        print(box);
        if (askToGoOn())
            return MessageBox::Answer::Ok;
    } else {
        TerminalBoxes::show(box);
        if (isPause)
            errors()
                << "Nobody can be asked: the standard input is no terminal. \"--yes\" goes on.\n";
    }
    hasEnded_ = true;
    if (ended)
        ended();
    return cautiousAnswer(box.buttons);
}

bool RunBoxes::askToGoOn() {
    for (;;) {
        errors() << "Enter continues, c cancels: " << std::flush;
        const std::optional<std::string> line = input_.line();
        if (line && line->empty())
            return true;
        if (!line || line == "c" || line == "C")
            break;
    }
    errors() << "Cancelled.\n";
    return false;
}

} // namespace bitlux
