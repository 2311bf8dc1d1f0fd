#include "sending/batches.h"

#include <utility>

namespace bitlux {

Batches::Batches(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      cmdSaveBatch(form, "cmdSaveBatch", "Save Batch..."),
      cmdDeleteBatch(form, "cmdDeleteBatch", "Delete Batch"),
      cmbBatches(form, "cmbBatches", forms::ComboBox::Style::List) {
    form.procedure("cmdSaveBatch_Click", [this] {
        parts_.run.cmdStopContinuous_Click();
        showSaveBatch();
    });
    form.procedure("cmdDeleteBatch_Click", [this] { cmdDeleteBatch_Click(); });
    form.procedure("cmbBatches_Click", [this] { cmbBatches_Click(); });
    form.keyProcedure("cmbBatches_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter && cmbBatches.listIndex() >= 0)
            parts_.run.sendOnceIfOffered();
    });
}

void Batches::save(const std::string& name) {
    const MessageBox question{.text = "Batch name exists!  Overwrite it?",
                              .buttons = MessageBox::Buttons::YesNo,
                              .icon = MessageBox::Icon::Exclamation};
    // Asked for every Batch of the name; the last one is overwritten.
    std::optional<int> overwritten;
    for (int n = 1; n < session_.BatchCount(); ++n) {
        if (session_.lstBatchList(n).front() != name)
            continue;
        if (parts_.boxes.show(question) != MessageBox::Answer::Yes)
            return;
        overwritten = n;
    }
    session_.ConfigDirty = ConstOn;
    BatchLists::Lines lines{name};
    lines.insert(lines.end(), parts_.commands.toSend().begin(), parts_.commands.toSend().end());
    if (overwritten) {
        session_.lstBatchList(*overwritten) = std::move(lines);
        return;
    }
    add(std::move(lines));
    cmbBatches.setListIndex(session_.BatchCount() - 2);
}

void Batches::add(BatchLists::Lines lines) {
    cmbBatches.addItem(lines.front());
    session_.lstBatchList.add(std::move(lines));
}

void Batches::clear() {
    cmbBatches.clear();
    session_.lstBatchList.clear();
}

void Batches::cmbBatches_Click() {
    if (cmbBatches.text().empty() || session_.BatchCount() == 1)
        return;
    parts_.run.cmdStopContinuous_Click();
    const std::optional<int> n = find(cmbBatches.text());
    if (!n) {
        say("Batch name was not found!");
        return;
    }
    const BatchLists::Lines& lines = session_.lstBatchList(*n);
    parts_.commands.setToSend({lines.begin() + 1, lines.end()});
}

void Batches::cmdDeleteBatch_Click() {
    parts_.run.cmdStopContinuous_Click();
    if (cmbBatches.text().empty()) {
        say("No batch selected.  Nothing to delete.");
        return;
    }
    if (session_.BatchCount() == 1) {
        say("No batches to delete.");
        return;
    }
    if (session_.BatchCount() == 2 && confirmDelete()) {
        clear();
        session_.ConfigDirty = ConstOn;
        return;
    }
    // Replacing the only Batch is confirmed by a second question.
    const std::optional<int> n = find(cmbBatches.text());
    if (!n) {
        say("Batch name was not found!");
        return;
    }
    if (!confirmDelete())
        return;
    cmbBatches.removeItem(*n - 1);
    // Selecting a Batch loads it, and it is found while the lists keep their order.
    cmbBatches.setListIndex(cmbBatches.items().empty() ? -1 : 0);
    session_.lstBatchList.remove(*n);
    session_.ConfigDirty = ConstOn;
}

std::optional<int> Batches::find(const std::string& name) const {
    for (int n = 1; n < session_.BatchCount(); ++n)
        if (session_.lstBatchList(n).front() == name)
            return n;
    return std::nullopt;
}

bool Batches::confirmDelete() {
    return parts_.boxes.show({.text = "Are you sure you want to delete this batch?",
                              .title = "Delete Batch",
                              .buttons = MessageBox::Buttons::YesNo}) == MessageBox::Answer::Yes;
}

} // namespace bitlux
