#include "sending/command_editor.h"

namespace bitlux {

CommandEditor::CommandEditor(forms::Form& form, CommandLists& commands, RunControls& run)
    : commands_(commands),
      run_(run),
      cmdAddMult(form, "cmdAddMult", "Add"),
      cmdAddPause(form, "cmdAddPause", "Add Pause"),
      cmdAddWait(form, "cmdAddWait", "Add Wait..."),
      cmdRemoveMult(form, "cmdRemoveMult", "Remove"),
      cmdMoveUpMult(form, "cmdMoveUpMult", "Move Up"),
      cmdMoveDownMult(form, "cmdMoveDownMult", "Move Down"),
      cmdClearMultiple(form, "cmdClearMultiple", "Clear List") {}

} // namespace bitlux
