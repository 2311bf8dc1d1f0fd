#include "sending/quick_commands.h"

namespace bitlux {

QuickCommands::QuickCommands(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      cmdSaveQC(form, "cmdSaveQC", "S&ave"),
      cmdDeleteQC(form, "cmdDeleteQC", "&Delete") {}

} // namespace bitlux
