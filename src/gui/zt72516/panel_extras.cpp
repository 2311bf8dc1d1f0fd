#include "gui/theme.h"
#include "gui/zt72516/extras.h"
#include "panels/zt72516/word_builder.h"

#include <QHBoxLayout>

namespace bitlux::gui {

namespace {

QWidget* makeWord(const char* line, forms::Label& word, const PanelWidgets& widgets,
                  QWidget* parent) {
    auto* pair = new QWidget(parent);
    auto* row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(line, pair));
    auto* text = widgets.binder.make<QLabel>(word, pair);
    text->setFont(fixedFont());
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 24);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    row->addWidget(text);
    return pair;
}

} // namespace

void addWordDisplayExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    auto* part = form.findPart<zt72516::WordBuilder>();
    if (part == nullptr)
        return;
    extras.lastWord.push_back([widgets, part](QWidget* parent) {
        return makeWord("MOSI", part->SPIWordSent, widgets, parent);
    });
    extras.lastWord.push_back([widgets, part](QWidget* parent) {
        return makeWord("MISO", part->SPIWordRcvd, widgets, parent);
    });
}

} // namespace bitlux::gui
