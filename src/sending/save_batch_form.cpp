#include "sending/save_batch_form.h"

namespace bitlux {

SaveBatchForm::SaveBatchForm(forms::FormSet& set, Batches& batches, MessageBoxes& boxes)
    : Form(set, "frmSaveBatch", "Save Batch"),
      batches_(batches),
      boxes_(boxes),
      txtBatchName(*this, "txtBatchName"),
      cmdSave(*this, "cmdSave", "Save"),
      cmdCancel(*this, "cmdCancel", "Cancel") {
    procedure("Form_Load", [this] { txtBatchName.setText(""); });
    procedure("cmdSave_Click", [this] { cmdSave_Click(); });
    procedure("cmdCancel_Click", [this] { setVisible(false); });
    keyProcedure("txtBatchName_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            cmdSave_Click();
    });
}

void SaveBatchForm::cmdSave_Click() {
    if (txtBatchName.text().empty())
        boxes_.show({.text = "No batch name entered.  Cannot Save."});
    else
        batches_.save(txtBatchName.text());
    setVisible(false);
}

} // namespace bitlux
