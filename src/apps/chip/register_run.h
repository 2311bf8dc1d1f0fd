#pragma once

#include "apps/chip/register_options.h"
#include "panels/common/chip_exchange.h"
#include "registers/register_access.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bitlux {

/// The value of a difference that a snapshot lacks is shown as "-".
std::string differenceLines(const SnapshotDifference& difference);

/// A command of `bitlux chip` that sends words.
class RegisterRun : public CommandRun {
public:
    /// All outlive it.
    RegisterRun(const RegisterOptions& options, const RegisterCatalog& catalog,
                std::ostream& output, std::ostream& errors);

private:
    /// The changes of a register, in one write.
    struct Change {
        const RegisterItem* item = nullptr;
        std::vector<FieldChange> fields;
        std::optional<std::uint64_t> whole;
    };

    bool prepare() override;
    bool sendPass() override;
    std::unique_ptr<WordReport> makeReport() override;
    [[nodiscard]] int verdict() const override { return verdict_; }
    [[nodiscard]] std::string where() const override { return ""; }

    void chooseItems();
    void readChanges();
    Change& changeOf(const RegisterItem& item);
    void addChange(const std::string& text);

    void perform();
    void readItems();
    void writeChanges();
    void write(const Change& change);
    void dump();
    void compare();
    void load();
    void watch();
    void watchOnce();
    void printMismatch(const RegisterAccess::Mismatch& mismatch);
    void print(const std::string& lines, const std::string& kind, const std::string& members);

    const RegisterOptions& options_;
    const RegisterCatalog& catalog_;
    std::optional<ChipExchange> exchange_; ///< while words are sent
    RegisterAccess access_;
    WordReport* lines_ = nullptr;
    std::vector<const RegisterItem*> items_;
    std::vector<Change> changes_;
    RegisterSnapshot snapshot_;
    std::map<const RegisterItem*, std::uint64_t> watched_; ///< last values
    int verdict_ = 0;
};

} // namespace bitlux
