#include "panels/common/sequence_files.h"

#include "panels/common/sequence_file.h"

#include <optional>
#include <string>

namespace bitlux {

SequenceFiles::SequenceFiles(forms::Form& form, SequenceLists& lists, FileDialogs& dialogs)
    : lists_(lists),
      dialogs_(dialogs),
      Cm_SAVE_Seq(form, "Cm_SAVE_Seq", "SAVE"),
      Cm_LOAD_Seq(form, "Cm_LOAD_Seq", "LOAD") {
    form.procedure("Cm_SAVE_Seq_Click", [this] { Cm_SAVE_Seq_Click(); });
    form.procedure("Cm_LOAD_Seq_Click", [this] { Cm_LOAD_Seq_Click(); });
}

void SequenceFiles::Cm_SAVE_Seq_Click() {
    const std::optional<std::string> fileName = dialogs_.ask({.kind = FileDialog::Kind::Save,
                                                              .title = "Save Sequence",
                                                              .filter = sequenceFilter,
                                                              .fileName = {}});
    if (fileName)
        saveSequence(*fileName, lists_.commands(), lists_.values());
}

void SequenceFiles::Cm_LOAD_Seq_Click() {
    const std::optional<std::string> fileName = dialogs_.ask({.kind = FileDialog::Kind::Open,
                                                              .title = "Load sequence",
                                                              .filter = sequenceFilter,
                                                              .fileName = {}});
    if (fileName)
        lists_.assign(loadSequence(*fileName));
}

} // namespace bitlux
