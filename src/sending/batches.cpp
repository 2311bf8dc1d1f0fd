#include "sending/batches.h"

namespace bitlux {

Batches::Batches(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      cmdSaveBatch(form, "cmdSaveBatch", "Save Batch..."),
      cmdDeleteBatch(form, "cmdDeleteBatch", "Delete Batch"),
      cmbBatches(form, "cmbBatches", forms::ComboBox::Style::List) {}

} // namespace bitlux
