#include "panels/common/panel_form.h"

#include "panels/common/auto_reads.h"
#include "panels/common/command_store.h"
#include "panels/common/loop_pick.h"
#include "panels/common/save_question.h"
#include "panels/common/sequence_stops.h"
#include "panels/common/value_editor.h"
#include "platform/failure.h"
#include "platform/forms/form_set.h"

#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

std::vector<forms::TabStrip::Tab> outerTabsOf(const chips::Chip& chip) {
    std::vector<forms::TabStrip::Tab> tabs;
    for (const chips::OuterPage& page : chip.panel.pages)
        tabs.push_back({page.title, ""});
    return tabs;
}

std::vector<forms::TabStrip::Tab> registerTabsOf(const chips::Chip& chip) {
    std::vector<forms::TabStrip::Tab> tabs;
    for (const std::string& page : chip.registerPages())
        tabs.push_back({page, ""});
    return tabs;
}

std::optional<int> elementOf(const chips::ControlName& name) {
    return name.index < 0 ? std::nullopt : std::optional(name.index);
}

} // namespace

void PanelContext::missingPart() {
    throw Failure(Failure::Kind::OutOfRange, "The panel lacks a part that another one needs");
}

PanelWords::Travel travelOf(const chips::PanelLayout& panel) {
    if (panel.holds == chips::PanelLayout::Holds::WhileInFront)
        return PanelWords::Travel::InShapeOfSession;
    return panel.leavesType ? PanelWords::Travel::InTypeOfSession : PanelWords::Travel::InOwnShape;
}

PanelForm::PanelForm(forms::FormSet& set, const std::string& name, chips::ChipPtr chip,
                     const PanelSurroundings& outside)
    : Form(set, name, chip->panel.caption),
      outside_(outside),
      chip_(std::move(chip)),
      shape_(
          outside.session, chip_->word, chip_->panel,
          chip_->panel.showsType ? outside_.showType : [] {}),
      pageControls(*this),
      words(chip_->word, outside.session, outside.engine, outside.desk.boxes,
            travelOf(chip_->panel)),
      status(chip_->word, pageControls, words),
      sequence(*this, *chip_, words, outside_),
      registers(*chip_, pageControls, words,
                [this](const std::string& command, const std::string& value) {
                    sequence.lists.append(command, value);
                }),
      hexBoxes(*this, *chip_, pageControls, {outside.desk.boxes, outside.desk.sound}),
      variants(*chip_, *this, pageControls),
      snapshots(*this, chip_, pageControls, words, registers, outside_),
      outerTabs(*this, chip_->panel.outerTabs.name, outerTabsOf(*chip_),
                elementOf(chip_->panel.outerTabs)),
      registerTabs(*this, chip_->panel.registerTabs.name, registerTabsOf(*chip_),
                   elementOf(chip_->panel.registerTabs)) {
    words.starting = [this] { keepShape(); };
    sequence.commands.execute = [this](const chips::Command& any) { registers.execute(any); };
    addCompanions();
    for (const chips::OwnControl& any : chip_->controls)
        pageControls.add(any);
    makeParts();
    readAlls_ = std::make_unique<ReadAlls>(*chip_, pageControls, registers, outside.session,
                                           [this] { return variants.chosen(); });
    variants.start();
    pageControls.registerHandlers();
    registerProcedures();
}

void PanelForm::makeParts() {
    const PanelContext context{.outside = outside_,
                               .chip = *chip_,
                               .form = *this,
                               .controls = pageControls,
                               .words = words,
                               .shape = shape_,
                               .pages = registers,
                               .sequence = sequence,
                               .outerTabs = outerTabs,
                               .parts = parts_};
    const auto add = [&]<typename Part>(std::in_place_type_t<Part>, bool wanted) {
        if (wanted)
            parts_.push_back(std::make_unique<Part>(context));
    };
    const chips::SequenceStyle& style = chip_->sequence;
    add(std::in_place_type<SaveQuestion>, style.asksToSave);
    add(std::in_place_type<CommandStore>, !chip_->automaticReads.recorders.empty());
    for (const std::string& part : chip_->panel.parts)
        parts_.push_back(makePanelPart(part, context));
    add(std::in_place_type<ValueEditor>, style.editor.exists());
    add(std::in_place_type<SequenceStops>, style.stops.exists());
    add(std::in_place_type<LoopPick>, style.loop.picks);
    add(std::in_place_type<AutoReads>, chip_->automaticReads.exists());
}

void PanelForm::addCompanions() {
    for (const chips::Companion& any : chip_->panel.described) {
        if (!any.button.exists())
            continue;
        pageControls.addButton(any.button, any.title);
        pageControls.onClick(any.button, [this, &any] { set().show(any.form); });
    }
}

bool PanelForm::shows(std::string_view page) const {
    return chip_->panel.pages.at(static_cast<std::size_t>(outerTabs.selected() - 1)).shows == page;
}

void PanelForm::registerProcedures() {
    procedure("Form_Load", [this] { load(); });
    procedure("Form_Activate", [this] { shape_.take(); });
    if (chip_->panel.holds == chips::PanelLayout::Holds::WhileInFront)
        procedure("Form_Deactivate", [this] { shape_.restore(); });
    procedure("Form_Unload", [this] { unload(); });
}

void PanelForm::keepShape() {
    if (chip_->panel.holds == chips::PanelLayout::Holds::WhileInFront)
        shape_.keep();
}

void PanelForm::showMarked(bool present) {
    for (const chips::Companion& any : chip_->panel.described)
        if (any.marked && any.button.exists())
            pageControls.find(any.button)->setVisible(present);
    if (present)
        registers.showMarked();
}

void PanelForm::load() {
    outerTabs.setSelected(chip_->panel.firstPage + 1);
    if (!chip_->panel.marker.empty())
        showMarked(outside_.markers.present(chip_->panel.marker));
    for (const auto& part : parts_)
        part->load();
    shape_.take();
}

void PanelForm::unload() {
    for (const auto& part : parts_)
        part->unload();
    for (const std::string& companion : chip_->panel.companions)
        if (chip_->panel.findDescribed(companion) == nullptr)
            set().unload(companion);
        else if (set().isVisible(
                     companion)) // another form comes to the front; it may take the shape
            set().form(companion).setVisible(false);
    shape_.restore();
}

} // namespace bitlux
