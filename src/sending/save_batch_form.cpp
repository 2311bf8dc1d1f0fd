#include "sending/save_batch_form.h"

namespace bitlux {

SaveBatchForm::SaveBatchForm(forms::FormSet& set, Batches& batches)
    : Form(set, "frmSaveBatch", "Save Batch"),
      batches_(batches),
      txtBatchName(*this, "txtBatchName"),
      cmdSave(*this, "cmdSave", "Save"),
      cmdCancel(*this, "cmdCancel", "Cancel") {
    procedure("Form_Load", [this] { txtBatchName.setText(""); });
}

} // namespace bitlux
