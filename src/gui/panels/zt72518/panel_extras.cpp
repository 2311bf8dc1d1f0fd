#include "gui/panels/zt72518/extras.h"
#include "gui/panels/zt72518/mode_diagram.h"
#include "panels/zt72518/diagram_page.h"
#include "panels/zt72518/dongle_version.h"

#include <QToolButton>

namespace bitlux::gui {

namespace {

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

void addDongleVersionExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    using Part = zt72518::DongleVersion;
    if (form.findPart<Part>() == nullptr)
        return;
    extras.variantFrame = &widgets.controls.get<forms::Frame>(Part::variantFrame);
    extras.variants.emplace_back(
        [widgets](QWidget* parent) { return makeVersions(widgets, parent); });
}

void addDiagramExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras) {
    if (form.findPart<zt72518::DiagramPage>() == nullptr)
        return;
    extras.pages["mode diagram"] = [widgets](QWidget* parent) {
        return new ModeDiagram(widgets, parent);
    };
    extras.besideTabs.emplace_back(
        [&set = form.set()](QWidget* parent) { return makeTestButton(set, parent); });
}

} // namespace bitlux::gui
