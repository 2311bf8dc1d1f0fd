#include "panels/common/command_store.h"

#include "panels/common/sequence_file.h"
#include "panels/common/sequence_files.h"
#include "platform/failure.h"

#include <optional>

namespace bitlux {

CommandStore::CommandStore(const PanelContext& context)
    : desk_(context.outside.desk), lists_(context.sequence.lists) {
    context.words.sent = [this](const chips::Line& line, const std::string& value) {
        note(line.name, value);
    };
    forms::Form& form = context.form;
    form.variable("StoreCommands", StoreCommands);
    form.variable("StoreFileName", StoreFileName);
    form.variable("StoreFileNumber", StoreFileNumber);
    form.procedure("save_log", [this](const std::string& command, const std::string& value) {
        save_log(command, value);
    });
}

void CommandStore::start() {
    stop();
    const std::optional<std::string> fileName =
        desk_.fileDialogs.ask({.kind = FileDialog::Kind::Save,
                               .title = "Auto-Save Sequence",
                               .filter = sequenceFilter,
                               .fileName = {}});
    if (!fileName)
        return;
    startSequenceFile(*fileName, SequenceLists::commandHeader, lists_.valueHeader());
    StoreFileName = *fileName;
    StoreFileNumber = '1';
    StoreCommands = true;
}

void CommandStore::save_log(const std::string& command, const std::string& value) {
    try {
        appendToSequenceFile(StoreFileName, command, value);
    } catch (const Failure& failure) {
        stop();
        stopped();
        desk_.boxes.show({.text = failure.what()});
    }
}

} // namespace bitlux
