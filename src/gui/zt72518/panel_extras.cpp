#include "gui/theme.h"
#include "gui/zt72518/extras.h"
#include "gui/zt72518/mode_diagram.h"
#include "panels/zt72518/diagram_page.h"
#include "panels/zt72518/dongle_version.h"
#include "panels/zt72518/last_word_labels.h"

#include <QToolButton>

namespace bitlux::gui {

namespace {

constexpr const char* lastWordLabels = "Label_Liste";

QLabel* makeLastWord(const PanelWidgets& widgets, int label, QWidget* parent) {
    auto* text = widgets.make<QLabel, forms::Label>({lastWordLabels, label}, parent);
    text->setFont(fixedFont());
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 19);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return text;
}

QWidget* makeVersions(const PanelWidgets& widgets, QWidget* parent) {
    using Part = zt72518::DongleVersion;
    auto* group = new QWidget(parent);
    widgets.binder.bind(widgets.controls.get<forms::Frame>(Part::versionFrame), *group);
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < Part::count; ++i)
        row->addWidget(widgets.make<QRadioButton, forms::OptionButton>(Part::versions + i, group));
    return group;
}

QWidget* makeTestButton(forms::FormSet& set, QWidget* parent) {
    auto* test = new QToolButton(parent);
    test->setText("Test Mode...");
    test->setAutoRaise(true);
    QObject::connect(test, &QToolButton::clicked, test, [&set] { set.show("TestMode"); });
    return test;
}

} // namespace

void addLastWordExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    using Part = zt72518::LastWordLabels;
    if (form.findPart<Part>() == nullptr)
        return;
    constexpr int sent = 0;
    constexpr int received = 7;
    for (const int label : {sent, received})
        extras.lastWord.push_back(
            [widgets, label](QWidget* parent) { return makeLastWord(widgets, label, parent); });
    // The first of each kind is enough; the third one counts ones, which the lit bits tell.
    for (const int label : {1, 2, 3, 8})
        extras.copies.push_back(widgets.controls.find({lastWordLabels, label}));
}

void addDongleVersionExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    using Part = zt72518::DongleVersion;
    auto* part = form.findPart<Part>();
    if (part == nullptr)
        return;
    extras.variantFrame = &widgets.controls.get<forms::Frame>(Part::variantFrame);
    extras.variants.push_back([widgets](QWidget* parent) { return makeVersions(widgets, parent); });
    // They pan the choices, which are in sight as a whole.
    extras.copies.push_back(&part->HScroll1);
    extras.copies.push_back(&part->VScroll1);
}

void addDiagramExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    auto* part = form.findPart<zt72518::DiagramPage>();
    if (part == nullptr)
        return;
    extras.pages["mode diagram"] = [widgets](QWidget* parent) {
        return new ModeDiagram(widgets, parent);
    };
    extras.timers.push_back(&part->timer_auto_pre);
    extras.besideTabs.push_back(
        [&set = form.set()](QWidget* parent) { return makeTestButton(set, parent); });
}

} // namespace bitlux::gui
