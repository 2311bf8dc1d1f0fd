#include "panels/common/sequence_files.h"

#include "panels/common/sequence_file.h"
#include "platform/failure.h"

#include <optional>
#include <string>
#include <utility>

namespace bitlux {

SequenceFiles::SequenceFiles(forms::Form& form, const chips::SequenceStyle& style,
                             SequenceLists& lists, FileDialogs& dialogs)
    : quiet_(style.fieldFiles),
      lists_(lists),
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
        save(*fileName);
}

void SequenceFiles::save(const std::string& fileName) const {
    try {
        saveSequence(fileName, lists_.commands(), lists_.values());
    } catch (const Failure&) {
        if (!quiet_)
            throw;
    }
}

void SequenceFiles::Cm_LOAD_Seq_Click() {
    const std::optional<std::string> fileName = dialogs_.ask({.kind = FileDialog::Kind::Open,
                                                              .title = "Load sequence",
                                                              .filter = sequenceFilter,
                                                              .fileName = {}});
    if (fileName)
        load(*fileName);
}

void SequenceFiles::load(const std::string& fileName) {
    if (!quiet_)
        lists_.assign(loadSequence(fileName));
    else if (std::optional<SequenceRows> rows = loadSequenceFields(fileName))
        lists_.assignAndSelectLast(std::move(*rows));
}

} // namespace bitlux
