#include "sending/command_editor.h"

#include "sending/command_line.h"

namespace bitlux {

namespace {

/// Empty when nothing is selected.
std::string selectedLine(const forms::ListBox& list) {
    return list.listIndex() < 0 ? "" : list.line(static_cast<std::size_t>(list.listIndex()));
}

} // namespace

CommandEditor::CommandEditor(forms::Form& form, CommandLists& commands, RunControls& run)
    : commands_(commands),
      run_(run),
      cmdAddMult(form, "cmdAddMult", "Add"),
      cmdAddPause(form, "cmdAddPause", "Add Pause"),
      cmdAddWait(form, "cmdAddWait", "Add Wait..."),
      cmdRemoveMult(form, "cmdRemoveMult", "Remove"),
      cmdMoveUpMult(form, "cmdMoveUpMult", "Move Up"),
      cmdMoveDownMult(form, "cmdMoveDownMult", "Move Down"),
      cmdClearMultiple(form, "cmdClearMultiple", "Clear List") {
    for (const char* name : {"cmdAddMult_Click", "lstCommandsAvailable_DblClick"})
        form.procedure(name, [this] { cmdAddMult_Click(); });
    for (const char* name : {"cmdRemoveMult_Click", "lstCommandsToSend_DblClick"})
        form.procedure(name, [this] { cmdRemoveMult_Click(); });
    form.keyProcedure("lstCommandsAvailable_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            cmdAddMult_Click();
    });
    form.keyProcedure("lstCommandsToSend_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            cmdRemoveMult_Click();
    });
    form.procedure("cmdMoveUpMult_Click", [this] { cmdMoveUpMult_Click(); });
    form.procedure("cmdMoveDownMult_Click", [this] { cmdMoveDownMult_Click(); });
    form.procedure("cmdAddPause_Click", [this] {
        run_.cmdStopContinuous_Click();
        commands_.addToSend(pauseLine);
    });
    form.procedure("cmdAddWait_Click", [this] {
        run_.cmdStopContinuous_Click();
        showAddWait();
    });
    form.procedure("cmdClearMultiple_Click", [this] {
        run_.cmdStopContinuous_Click();
        commands_.setToSend({});
    });
}

void CommandEditor::cmdAddMult_Click() {
    run_.cmdStopContinuous_Click();
    const std::string line = selectedLine(commands_.lstCommandsAvailable);
    if (!line.empty())
        commands_.addToSend(line);
}

void CommandEditor::cmdRemoveMult_Click() {
    run_.cmdStopContinuous_Click();
    const forms::ListBox& list = commands_.lstCommandsToSend;
    if (!selectedLine(list).empty())
        commands_.removeToSend(static_cast<std::size_t>(list.listIndex()));
}

void CommandEditor::cmdMoveUpMult_Click() {
    run_.cmdStopContinuous_Click();
    const int selected = commands_.lstCommandsToSend.listIndex();
    if (selected >= 1)
        commands_.moveSelectedToSend(selected - 1);
}

void CommandEditor::cmdMoveDownMult_Click() {
    run_.cmdStopContinuous_Click();
    const int selected = commands_.lstCommandsToSend.listIndex();
    if (selected >= 0 && selected + 1 < static_cast<int>(commands_.lstCommandsToSend.count()))
        commands_.moveSelectedToSend(selected + 1);
}

} // namespace bitlux
