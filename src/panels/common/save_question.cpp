#include "panels/common/save_question.h"

namespace bitlux {

void SaveQuestion::unload() {
    if (pages_.at(static_cast<std::size_t>(tabs_.selected() - 1)).shows != "sequence")
        return;
    const MessageBox question{.text = "Save the sequence before exit?",
                              .title = "Quit " + form_.caption(),
                              .buttons = MessageBox::Buttons::YesNo};
    if (boxes_.show(question) == MessageBox::Answer::Yes)
        form_.call("Cm_SAVE_Seq_Click");
    else
        sequence_.variables.RunEnabled = false;
}

} // namespace bitlux
