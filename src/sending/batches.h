#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"
#include "session/session.h"

#include <functional>
#include <optional>
#include <string>

namespace bitlux {

/// The Batches on the Batch page: copies of the commands to send, kept under names
/// (Session::lstBatchList). cmbBatches shows the names in the same order.
class Batches {
public:
    /// The dependencies; all outlive it.
    struct Parts {
        Session& session;
        CommandLists& commands;
        RunControls& run;
        MessageBoxes& boxes;
    };

    Batches(forms::Form& form, const Parts& parts);

    /// Shows the dialog that asks for a name. Set by its owner.
    std::function<void()> showSaveBatch;

    /// Saves the commands to send as a Batch, after a question when the name exists.
    void save(const std::string& name);
    /// Adds a Batch after the others.
    void add(BatchLists::Lines lines);
    /// Removes all.
    void clear();

    void cmdDeleteBatch_Click();
    /// Copies the selected Batch to the commands to send.
    void cmbBatches_Click();

private:
    /// The first Batch of this name.
    [[nodiscard]] std::optional<int> find(const std::string& name) const;
    bool confirmDelete();
    void say(const char* text) { parts_.boxes.show({.text = text}); }

    Parts parts_;
    Session& session_;

public:
    forms::Button cmdSaveBatch;
    forms::Button cmdDeleteBatch;
    forms::ComboBox cmbBatches;
};

} // namespace bitlux
