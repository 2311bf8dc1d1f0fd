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
    bool prepare() override;
    bool sendPass() override;
    std::unique_ptr<WordReport> makeReport() override;
    [[nodiscard]] int verdict() const override { return verdict_; }
    [[nodiscard]] std::string where() const override { return ""; }

    void chooseItems();
    void readChanges();
    void readExpectations();
    void add(const std::string& text, std::vector<Assignment>& assignments,
             const RegisterItem* usual = nullptr);

    void perform();
    void readItems();
    /// Reads until the value is as expected or time is up; the last value.
    std::uint64_t readExpected(const RegisterItem& item);
    void writeChanges();
    void write(const Assignment& change);
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
    std::vector<Assignment> changes_; ///< each in one write
    std::vector<Assignment> expected_;
    RegisterSnapshot snapshot_;
    std::map<const RegisterItem*, std::uint64_t> watched_; ///< last values
    int verdict_ = 0;
};

} // namespace bitlux
