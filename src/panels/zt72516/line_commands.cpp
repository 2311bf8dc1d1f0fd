#include "panels/zt72516/line_commands.h"

#include "platform/failure.h"

#include <fmt/format.h>

namespace bitlux::zt72516 {

namespace {

constexpr std::uint64_t dataMask = 0xFFFFFF;

void selectAll(forms::TextBox& box) {
    box.select(0, box.text().size());
}

} // namespace

LineCommands::LineCommands(const PanelContext& context)
    : controls_(context.controls),
      words_(context.words),
      sequence_(context.sequence),
      builder_(context.part<WordBuilder>()) {
    sequence_.player.setCommands(*this);
    forms::Form& form = context.form;
    SequenceVariables& variables = sequence_.variables;
    form.variable("SendAfterConvert", SendAfterConvert);
    form.variable("LastReadValue", LastReadValue);
    form.variable("StopLoop", variables.LoopStopRequest);
    form.variable(
        "FormClosing", [&variables] { return forms::toValue(!variables.RunEnabled); },
        [&variables](const forms::Value& value) {
            variables.RunEnabled = !forms::valueAs<bool>(value);
        });
    form.procedure("CovertNameToSpiWord", [this](const std::string& name, int index) {
        CovertNameToSpiWord(name, index);
    });
    form.procedure("RunSequence",
                   [this](int first, int last) { sequence_.player.RunSequenceRange(first, last); });
    form.procedure("Text_Wait_GotFocus", [this] { selectAll(sequence_.editor.Text_Wait); });
    form.procedure("Val_loop_GotFocus",
                   [this](int index) { selectAll(sequence_.Val_loop(index)); });
}

void LineCommands::CovertNameToSpiWord(const std::string& name, int index) {
    SendAfterConvert = true;
    words_.starting();
    words_.fill(0);
    const LineMeaning* meaning = sequence_.index().find(name);
    if (meaning == nullptr)
        return;
    if (meaning->command != nullptr) {
        controls_.run(meaning->command->button);
        SendAfterConvert = false;
    } else if (meaning->read != nullptr) {
        words_.fill(words_.wordOf(*meaning->read));
    } else {
        words_.fill(words_.wordOf(*meaning->written, 0));
        if (meaning->line->takesValue)
            builder_.SetSpiData(sequence_.lists.value(index));
    }
}

std::vector<std::string> LineCommands::play(int line, const std::string& name, const std::string&) {
    try {
        CovertNameToSpiWord(name, line);
    } catch (const Failure& failure) {
        throw Failure(failure.kind(), fmt::format("Row {}: {}", line, failure.what()));
    }
    if (SendAfterConvert)
        words_.sendFilled();
    LastReadValue = static_cast<std::int32_t>(words_.answer() & dataMask);
    return {fmt::format("{:08X}", LastReadValue)};
}

} // namespace bitlux::zt72516
