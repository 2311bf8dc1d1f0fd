#include "sending/quick_commands.h"

#include "sending/command_line.h"
#include "sending/word_fit.h"
#include "sending/word_text.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// Removes a command from a Batch, whose name stays. The line after a removed one is not
/// checked, so that of two copies in a row one is left.
void removeFrom(BatchLists::Lines& lines, const std::string& name) {
    std::size_t kept = 1;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (lines[i] == name && ++i == lines.size())
            break;
        if (kept != i)
            lines[kept] = std::move(lines[i]);
        ++kept;
    }
    lines.resize(kept);
}

} // namespace

QuickCommands::QuickCommands(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      cmdSaveQC(form, "cmdSaveQC", "S&ave"),
      cmdDeleteQC(form, "cmdDeleteQC", "&Delete"),
      itemRestoreCommands(form, "itemRestoreCommands", "&Restore Quick Commands") {
    form.procedure("cmdSaveQC_Click", [this] { cmdSaveQC_Click(); });
    form.procedure("cmdDeleteQC_Click", [this] { cmdDeleteQC_Click(); });
    form.procedure("itemRestoreCommands_Click", [this] { RestoreQuickCommands(); });
    form.procedure("RestoreQuickCommands", [this] { return RestoreQuickCommands(); });
    form.procedure("cmbMasterQCList_Click", [this] { cmbMasterQCList_Click(); });
    form.procedure("cmbMasterQCList_DblClick", [this] { cmbMasterQCList_DblClick(); });
    form.keyProcedure("cmbMasterQCList_KeyDown",
                      [this](forms::KeyCode code) { cmbMasterQCList_KeyDown(code); });
}

void QuickCommands::cmdSaveQC_Click() {
    session_.ConfigDirty = ConstOn; // also when the save is refused
    parts_.run.cmdStopContinuous_Click();
    const std::string name = parts_.commands.cmbMasterQCList.text();
    std::optional<std::size_t> row;
    if (!acceptName(name) || !chooseRow(name, row))
        return;
    if (session_.DisplayHex == 1 && !parts_.singleWord.takeHexEntry("Nothing to save!"))
        return;
    store(name, row);
    rebuildLists();
}

bool QuickCommands::acceptName(const std::string& name) {
    if (name.empty())
        parts_.boxes.show({.text = "You must type a name for the Quick Command."});
    else if (isInstruction(name))
        parts_.boxes.show({.text = "Quick Commands cannot begin with '*'."});
    else
        return true;
    return false;
}

bool QuickCommands::chooseRow(const std::string& name, std::optional<std::size_t>& row) {
    const MessageBox question{.text = "Quick Command already exists!  Overwrite it?",
                              .buttons = MessageBox::Buttons::YesNo,
                              .icon = MessageBox::Icon::Exclamation};
    // Asked for every row of the name; the last one is overwritten.
    for (std::size_t i = 0; i < session_.QuickCommandTable.rows(); ++i) {
        if (session_.QuickCommandTable.name(i) != name)
            continue;
        if (parts_.boxes.show(question) != MessageBox::Answer::Yes)
            return false;
        row = i;
    }
    return true;
}

void QuickCommands::store(const std::string& name, std::optional<std::size_t> row) {
    QuickCommandTable& table = session_.QuickCommandTable;
    const WordBits word = session_.SingleWordBits;
    if (word.size() < table.wordLength())
        throw doesNotFit("The word of this page", word.empty() ? 0 : word.size() - 1,
                         static_cast<int>(table.wordLength()));
    if (!row) {
        if (session_.QuickCommandTableEmpty == ConstOff)
            table.addRow();
        table.nameLastRow(name);
    }
    table.setBits(row.value_or(table.rows() - 1), word);
    session_.QuickCommandTableEmpty = ConstOff;
}

void QuickCommands::rebuildLists() {
    const QuickCommandTable& table = session_.QuickCommandTable;
    std::vector<std::string> names;
    names.reserve(table.rows());
    for (std::size_t row = 0; row < table.rows(); ++row)
        names.emplace_back(table.name(row));
    parts_.commands.setNames(std::move(names));
    parts_.emptied.recount();
}

int QuickCommands::RestoreQuickCommands() {
    parts_.run.cmdStopContinuous_Click();
    const auto restored = static_cast<int>(parts_.emptied.count());
    if (restored == 0) {
        parts_.boxes.show({.text = "There are no words of Quick Commands to restore."});
        return 0;
    }
    session_.ConfigDirty = ConstOn;
    parts_.emptied.restore();
    rebuildLists();
    return restored;
}

void QuickCommands::cmdDeleteQC_Click() {
    parts_.run.cmdStopContinuous_Click();
    const int selected = parts_.commands.cmbMasterQCList.listIndex();
    const std::string name = parts_.commands.cmbMasterQCList.text();
    if (selected < 0) {
        parts_.boxes.show({.text = "You haven't selected a command to delete!"});
        return;
    }
    session_.ConfigDirty = ConstOn;
    removeRow(static_cast<std::size_t>(selected));
    parts_.emptied.forget(name);
    parts_.commands.removeAllToSend(name);
    for (int n = 1; n < session_.BatchCount(); ++n)
        removeFrom(session_.lstBatchList(n), name);
    rebuildLists();
}

void QuickCommands::removeRow(std::size_t row) {
    QuickCommandTable& table = session_.QuickCommandTable;
    if (table.rows() > 1) {
        table.removeRow(row);
        return;
    }
    session_.QuickCommandTableEmpty = ConstOn;
    table.recreate(session_.SPIWordLength);
}

void QuickCommands::cmbMasterQCList_Click() {
    const int selected = parts_.commands.cmbMasterQCList.listIndex();
    if (selected < 0)
        return;
    std::vector<std::int16_t> bits = wordOf(static_cast<std::size_t>(selected));
    if (session_.DisplayHex == 1) {
        std::replace(bits.begin(), bits.end(), QuickCommandTable::noBit, std::int16_t{0});
        parts_.singleWord.txtHexWordToSend.setText(hexText(bits));
    } else if (session_.DisplayHex == 0) {
        showBits(bits);
    }
}

std::vector<std::int16_t> QuickCommands::wordOf(std::size_t row) const {
    const QuickCommandTable& table = session_.QuickCommandTable;
    const auto length = static_cast<std::size_t>(std::max<int>(session_.SPIWordLength, 0));
    // After the rows in use there is a spare one. The lists still offer it when the table was
    // emptied and the names were not.
    if (row == table.rows())
        return std::vector<std::int16_t>(length, QuickCommandTable::noBit);
    const WordBits bits = table.bits(row);
    if (bits.size() < length)
        throw commandDoesNotFit(table.name(row), bits.size(), session_.SPIWordLength);
    return {bits.begin(), bits.begin() + static_cast<std::ptrdiff_t>(length)};
}

void QuickCommands::showBits(const std::vector<std::int16_t>& bits) {
    for (std::size_t i = 0; i < bits.size(); ++i) {
        session_.StopSending = bits[i] != 0 && bits[i] != 1;
        if (session_.StopSending) { // a box for every bad bit
            parts_.boxes.show(
                {.text = fmt::format("Quick Command array element is neither 0 nor 1!{}"
                                     "Check the USB cable and restart program",
                                     lineBreak)});
            continue;
        }
        session_.SingleWordBits.at(i) = bits[i];
        if (i < SingleWordPage::bitColumns)
            parts_.singleWord.cmdSI_single(static_cast<int>(i))
                .setCaption(bits[i] == 0 ? "0" : "1");
    }
}

void QuickCommands::cmbMasterQCList_DblClick() {
    cmbMasterQCList_Click();
    parts_.run.cmdSendOnce_Click();
}

void QuickCommands::cmbMasterQCList_KeyDown(forms::KeyCode code) {
    if (code != forms::KeyCode::Enter)
        return;
    forms::ComboBox& list = parts_.commands.cmbMasterQCList;
    if (list.listIndex() >= 0) {
        parts_.run.sendOnceIfOffered();
        return;
    }
    cmdSaveQC_Click();
    list.setEditText("");
    list.setListIndex(static_cast<int>(list.items().size()) - 1);
}

} // namespace bitlux
