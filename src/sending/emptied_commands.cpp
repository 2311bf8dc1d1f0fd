#include "sending/emptied_commands.h"

#include <utility>
#include <vector>

namespace bitlux {

namespace {

bool hasNames(const QuickCommandTable& table) {
    return table.rows() > 1 || !table.name(0).empty();
}

/// The row that Apply left free stays at the top when a command is saved.
void dropFreeRow(QuickCommandTable& table) {
    if (table.rows() > 1 && table.name(0).empty())
        table.removeRow(0);
}

/// Both, of one word length; where a name is in both, the later word.
QuickCommandTable merged(QuickCommandTable earlier, const QuickCommandTable& later) {
    std::vector<std::size_t> further; // looked for first, since every new row ends the index
    for (std::size_t row = 0; row < later.rows(); ++row) {
        if (later.name(row).empty())
            continue;
        if (const std::optional<std::size_t> same = earlier.lastRowNamed(later.name(row)))
            earlier.setBits(*same, later.bits(row));
        else
            further.push_back(row);
    }
    for (const std::size_t row : further) {
        earlier.addRow();
        earlier.nameLastRow(later.name(row));
        earlier.setBits(earlier.rows() - 1, later.bits(row));
    }
    return earlier;
}

} // namespace

void EmptiedCommands::empty() {
    QuickCommandTable& table = session_.QuickCommandTable;
    if (hasNames(table)) {
        dropFreeRow(table);
        if (hasNames(kept_) && kept_.wordLength() == table.wordLength())
            kept_ = merged(std::move(kept_), table);
        else
            kept_ = std::move(table);
    }
    table.recreate(session_.SPIWordLength);
    recount();
}

void EmptiedCommands::forget() {
    kept_.recreate(0);
    recount();
}

void EmptiedCommands::forget(std::string_view name) {
    while (const std::optional<std::size_t> row = kept_.lastRowNamed(name)) {
        if (kept_.rows() == 1) {
            forget();
            return;
        }
        kept_.removeRow(*row);
    }
    recount();
}

std::size_t EmptiedCommands::countMissing() const {
    std::size_t missing = 0;
    for (std::size_t row = 0; hasNames(kept_) && row < kept_.rows(); ++row)
        if (!session_.QuickCommandTable.lastRowNamed(kept_.name(row)))
            ++missing;
    return missing;
}

std::size_t EmptiedCommands::count() const {
    if (kept_.wordLength() != session_.QuickCommandTable.wordLength())
        return 0;
    if (!missing_)
        missing_ = countMissing();
    return *missing_;
}

bool EmptiedCommands::has(std::string_view name) const {
    return count() > 0 && !name.empty() && kept_.lastRowNamed(name).has_value();
}

void EmptiedCommands::restore() {
    session_.QuickCommandTable = merged(std::move(kept_), session_.QuickCommandTable);
    session_.QuickCommandTableEmpty = ConstOff;
    forget();
}

} // namespace bitlux
