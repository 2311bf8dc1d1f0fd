#pragma once

#include "chips/description.h"
#include "panels/common/panel_surroundings.h"
#include "panels/common/panel_words.h"
#include "panels/common/register_pages.h"
#include "panels/common/snapshot_report.h"
#include "platform/event.h"
#include "platform/forms/form.h"
#include "registers/register_catalog.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// Snapshots of the registers of a panel's chip: saves one, compares the chip with one, writes one.
///
/// Only what a read does not change is read. A failed word ends everything, after the message of
/// the link; nothing is saved, shown or marked then. The bits that differ are marked in the rows of
/// the panel, until the next comparison or the next read or write of the register.
///
/// The words are those of the panel, but nothing records them. Each member is a procedure or a
/// variable of the form.
class PanelSnapshots {
public:
    /// All outlive it. It follows the words and writes of the panel.
    PanelSnapshots(forms::Form& form, chips::ChipPtr chip, PanelControls& controls,
                   PanelWords& words, RegisterPages& pages, const PanelSurroundings& outside);

    /// Asks for a file, and saves what can be read there. This and the next two raise Failure for
    /// files and for a bit order in which nothing can be sent.
    void SaveSnapshot();
    /// Asks for a snapshot, reads the same registers and shows them. The differences are reported
    /// and marked.
    void CompareSnapshot();
    /// Asks for a snapshot and, when the chip differs, whether to write it. Writes what differs and
    /// reads it back where that is harmless; what did not take is reported and marked. The panel
    /// shows what was written.
    void WriteSnapshot();
    void ClearMarks();

    /// Whether a register that the user writes is read back, as far as that is harmless, and the
    /// bits that did not take are marked.
    bool CheckWrites = false;

    [[nodiscard]] const SnapshotReport& report() const { return report_; }
    /// There is a new report.
    Event<> reported;

private:
    struct Chosen {
        std::string name; ///< of the file, without folders
        RegisterSnapshot snapshot;
    };
    using Value = RegisterSnapshot::Value;
    using Differences = std::vector<SnapshotDifference>;

    void requireSendable() const;
    [[nodiscard]] const RegisterCatalog& catalog();
    [[nodiscard]] std::optional<Chosen> choose(const char* title);
    /// The word that reads it changes nothing, and the variant has it.
    [[nodiscard]] bool isHarmless(const RegisterItem& item) const;
    /// Nothing when a word was not answered.
    [[nodiscard]] std::optional<std::uint64_t> read(const RegisterItem& item) const;
    /// All that can be read, or of that what a snapshot has.
    [[nodiscard]] std::optional<RegisterSnapshot> readAll(const RegisterSnapshot* only);
    [[nodiscard]] RegisterSnapshot toWrite(const RegisterSnapshot& wanted,
                                           const RegisterSnapshot& now);
    [[nodiscard]] bool isConfirmed(const RegisterSnapshot& plan, const std::string& file) const;
    /// Writes and reads back one value after the other, as long as the chip answers. How many were
    /// written; `refused` receives what did not take.
    std::size_t writeAll(const RegisterSnapshot& plan, Differences& refused);
    void reportCompared(Chosen chosen, const RegisterSnapshot& now);
    void reportWritten(std::string heading, Differences refused);
    void publish(SnapshotReport report);

    /// Reads back what the user has written.
    void check(const chips::Register& target, std::uint64_t value);
    /// Marks the bits that did not take, and returns them. What was read is shown where the user
    /// does not write.
    std::uint64_t markRefused(const RegisterItem& item, std::uint64_t written, std::uint64_t read);
    /// Shows what was read, with marks on some bits.
    void showRead(const RegisterItem& item, std::uint64_t value, std::uint64_t bits);
    /// Its row or its choices on the panel are those of no other register.
    [[nodiscard]] bool isAlone(const chips::Register& owner) const;
    /// The panel has the row, no form beside it.
    [[nodiscard]] static bool hasRow(const chips::Row& row);
    void mark(const chips::Row& row, std::uint64_t bits);
    /// A register was written, or a view was read: its marks say nothing any more.
    void forget(const chips::Register* target, const chips::View* view);

    const chips::ChipPtr chip_;
    PanelControls& controls_;
    PanelWords& words_;
    RegisterPages& pages_;
    const PanelSurroundings& outside_;
    std::unique_ptr<RegisterCatalog> catalog_; ///< made when it is first needed
    SnapshotReport report_;
    bool isMarked_ = false; ///< some bit may be
};

} // namespace bitlux
