#include "gui/panels/last_word.h"

#include "gui/desktop/theme.h"

namespace bitlux::gui {

LastWord::LastWord(PanelWords& words, QWidget* parent) : QLabel("No word was sent yet", parent) {
    setFont(fixedFont());
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    exchanged_ = words.exchanged.follow([this, &words](std::uint64_t word) {
        setText(QString::fromStdString("Sent " + words.text(word) + ", received " +
                                       words.text(words.answer())));
    });
}

} // namespace bitlux::gui
