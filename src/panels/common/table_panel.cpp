#include "panels/common/table_panel.h"

#include <array>
#include <memory>
#include <string>

namespace bitlux {

namespace {

constexpr std::array<SequenceLayout::Column, 1> answers{
    {{"List_Val_read", "Value in Hexadecimal"}}};
constexpr SequenceLayout layout{.valueHeader = "Value in Hexa", .answers = answers, .numbers = 42};

} // namespace

TablePanel::TablePanel(forms::FormSet& set, const chips::Chip& chip, const Parts& parts)
    : Form(set, std::string(chip.form), std::string(chip.title)),
      shape_(parts.session),
      Val_loop("Val_loop", 0, 1,
               [this](const std::string& name, int index) {
                   return std::make_unique<forms::TextBox>(*this, name, index);
               }),
      lists(*this, layout),
      files(*this, lists, parts.desk.fileDialogs),
      editor(*this, lists, parts.desk.boxes),
      pageControls(*this),
      words(
          chip.format, parts.session, parts.engine,
          [this](const std::string& name, const std::string& value) { lists.append(name, value); }),
      registers(pageControls, words, chip.registers),
      commands(chip.registers, words),
      player(*this, {.session = parts.session,
                     .failures = parts.engine.failures(),
                     .variables = variables_,
                     .lists = lists,
                     .commands = commands,
                     .start = Val_loop(0),
                     .stop = Val_loop(1),
                     .loop = parts.desk.loop,
                     .clock = parts.clock}) {
    pageControls.registerHandlers();
    const auto takeOver = [this, &chip] {
        shape_.set(static_cast<std::int16_t>(chip.format.bits), chip.spiType);
    };
    procedure("Form_Load", [this, takeOver] {
        shape_.keep();
        takeOver();
    });
    procedure("Form_Activate", takeOver);
    procedure("Form_Unload", [this] { shape_.giveBack(); });
}

} // namespace bitlux
