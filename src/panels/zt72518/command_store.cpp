#include "panels/zt72518/command_store.h"

#include "panels/common/sequence_file.h"
#include "panels/common/sequence_files.h"
#include "panels/zt72518/sequence_layout.h"
#include "platform/failure.h"

#include <optional>

namespace bitlux::zt72518 {

CommandStore::CommandStore(forms::Form& form, PanelVariables& variables, const Desk& desk)
    : variables_(variables), desk_(desk) {
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
    startSequenceFile(*fileName, SequenceLists::commandHeader, sequenceLayout.valueHeader);
    variables_.StoreFileName = *fileName;
    variables_.StoreFileNumber = "1";
    variables_.StoreCommands = true;
}

void CommandStore::save_log(const std::string& command, const std::string& value) {
    try {
        appendToSequenceFile(variables_.StoreFileName, command, value);
    } catch (const Failure& failure) {
        stop();
        stopped();
        desk_.boxes.show({.text = failure.what()});
    }
}

} // namespace bitlux::zt72518
