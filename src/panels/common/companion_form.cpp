#include "panels/common/companion_form.h"

#include "platform/failure.h"

#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

const chips::Companion& describedForm(const chips::Chip& chip, const std::string& name) {
    if (const chips::Companion* found = chip.panel.findDescribed(name))
        return *found;
    throw Failure(Failure::Kind::OutOfRange,
                  fmt::format("{} has no form \"{}\"", chip.title, name));
}

} // namespace

CompanionForm::CompanionForm(forms::FormSet& set, const std::string& name, chips::ChipPtr chip,
                             const PanelSurroundings& outside, std::function<PanelForm&()> panel)
    : Form(set, name, describedForm(*chip, name).caption),
      chip_(std::move(chip)),
      panel_(std::move(panel)),
      pageControls(*this),
      words(chip_->word, outside.session, outside.engine, outside.desk.boxes,
            travelOf(chip_->panel)),
      registers(
          *chip_, pageControls, words, [](const std::string&, const std::string&) {}, name),
      readAlls_(
          *chip_, pageControls, registers, outside.session, [] { return std::string(); }, name) {
    words.starting = [this] { panel_().keepShape(); };
    words.answered = [this](const chips::BitList& status) { panel_().words.answered(status); };
    pageControls.registerHandlers();
    procedure("Form_Load", [this] { panel_().takeShape(); });
    procedure("Form_Activate", [this] { panel_().takeShape(); });
}

} // namespace bitlux
