#include "panels/zt72518/save_question.h"

namespace bitlux::zt72518 {

void SaveQuestion::unload() {
    if (tabs_.selected() != sequenceTab)
        return;
    const MessageBox question{.text = "Save the sequence before exit?",
                              .title = "Quit ZT72518 - 511 - 514 Interface",
                              .buttons = MessageBox::Buttons::YesNo};
    if (boxes_.show(question) == MessageBox::Answer::Yes)
        form_.call("Cm_SAVE_Seq_Click");
    else
        sequence_.variables.RunEnabled = false;
}

} // namespace bitlux::zt72518
