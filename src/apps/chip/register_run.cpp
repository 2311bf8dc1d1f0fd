#include "apps/chip/register_run.h"

#include "apps/chip/register_command.h"
#include "apps/chip/register_text.h"
#include "platform/failure.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

using Task = RegisterOptions::Task;

/// Prints the result of the command; the words themselves are not printed.
class RegisterReport : public WordReport {
public:
    using WordReport::WordReport;

private:
    void printWord() override {}
};

} // namespace

std::string differenceLines(const SnapshotDifference& difference) {
    const RegisterItem& item = *difference.item;
    if (difference.before && difference.after)
        return changeLines(item, *difference.before, *difference.after);
    const auto shown = [&item](const std::optional<std::uint64_t>& value) {
        return value ? "0x" + item.hexOf(*value) : "-";
    };
    return fmt::format("{} {} -> {}", item.name, shown(difference.before), shown(difference.after));
}

RegisterRun::RegisterRun(const RegisterOptions& options, const RegisterCatalog& catalog,
                         std::ostream& output, std::ostream& errors)
    : CommandRun(options.command, output, errors),
      options_(options),
      catalog_(catalog),
      access_(catalog, [this](std::uint64_t word) { return (*exchange_)(word); }) {}

bool RegisterRun::prepare() {
    chooseItems();
    readChanges();
    readExpectations();
    if (options_.task == Task::Load || options_.task == Task::Diff)
        snapshot_ = fitted(catalog_, readSnapshot(options_.file), options_.file);
    return applySettings(options_.shape);
}

std::unique_ptr<WordReport> RegisterRun::makeReport() {
    auto report =
        std::make_unique<RegisterReport>(program(), clock(), output(), options().outputs.json);
    lines_ = report.get();
    return report;
}

void RegisterRun::chooseItems() {
    if (options_.task != Task::Read && options_.task != Task::Watch)
        return;
    for (const std::string& name : options_.names)
        items_.push_back(&catalog_.item(name));
    if (!options_.names.empty())
        return;
    for (const RegisterItem& any : catalog_.items())
        if (any.readable() && !any.clears())
            items_.push_back(&any);
}

void RegisterRun::readChanges() {
    if (options_.task != Task::Write)
        return;
    const std::optional<std::uint64_t> raw = wholeNumber(options_.raw);
    if (!options_.raw.empty() && !raw)
        throw WrongUse(options_.raw + ": This is no number.");
    for (const std::string& text : options_.names)
        if (raw)
            assignmentOf(changes_, catalog_.item(text)).whole = raw;
        else
            add(text, changes_);
}

/// A text that is no assignment is a wrong use of the command.
void RegisterRun::add(const std::string& text, std::vector<Assignment>& assignments,
                      const RegisterItem* usual) {
    try {
        addAssignment(catalog_, text, assignments, usual);
    } catch (const Failure& failure) {
        if (failure.kind() == Failure::Kind::Conversion)
            throw WrongUse(failure.what());
        throw;
    }
}

void RegisterRun::readExpectations() {
    const RegisterItem* usual = items_.size() == 1 ? items_.front() : nullptr;
    for (const std::string& text : options_.expect.patterns)
        add(text, expected_, usual);
    for (const Assignment& any : expected_) {
        static_cast<void>(any.unmetIn(0)); // raises where a value cannot be
        if (std::find(items_.begin(), items_.end(), any.item) == items_.end())
            items_.push_back(any.item);
    }
}

bool RegisterRun::sendPass() {
    try {
        exchange_.emplace(catalog_.chip().word, program().session(), program().engine(),
                          program().pins());
        perform();
        exchange_.reset();
        return !boxes().hasEnded();
    } catch (const Failure&) {
        exchange_.reset();
        if (boxes().hasEnded()) // its message has been shown
            return false;
        throw;
    }
}

void RegisterRun::perform() {
    switch (options_.task) {
    case Task::Read:
        return readItems();
    case Task::Write:
        return writeChanges();
    case Task::Dump:
        return dump();
    case Task::Diff:
        return compare();
    case Task::Load:
        return load();
    case Task::Watch:
        return watch();
    case Task::Decode:
    case Task::None:
        return;
    }
}

void RegisterRun::print(const std::string& lines, const std::string& kind,
                        const std::string& members) {
    if (lines_->isJson())
        lines_->printObject(fmt::format(R"("kind":"{}",{})", kind, members));
    else
        lines_->printLine(lines);
}

void RegisterRun::readItems() {
    for (const RegisterItem* item : items_) {
        const std::uint64_t value = readExpected(*item);
        print(valueLines(*item, value), "register", valueMembers(*item, value));
    }
}

std::uint64_t RegisterRun::readExpected(const RegisterItem& item) {
    const auto expected =
        std::find_if(expected_.begin(), expected_.end(),
                     [&item](const Assignment& any) { return any.item == &item; });
    if (expected == expected_.end())
        return access_.read(item);
    Retries retries(options_.expect, clock().nanoseconds());
    std::uint64_t value = 0;
    std::string unmet;
    do {
        value = access_.read(item);
        unmet = expected->unmetIn(value);
    } while (!unmet.empty() && retries.mayAskAgain(clock().nanoseconds()));
    if (!unmet.empty()) {
        verdict_ = differsError;
        warn(fmt::format("{}: {}", item.name, unmet));
    }
    return value;
}

void RegisterRun::writeChanges() {
    for (const Assignment& any : changes_)
        write(any);
}

void RegisterRun::write(const Assignment& change) {
    const RegisterItem& item = *change.item;
    const auto base = options_.fromReset || change.whole ? RegisterAccess::Base::Reset
                                                         : RegisterAccess::Base::Chip;
    std::uint64_t value = access_.changed(item, change.fields, base);
    if (change.whole)
        value = *change.whole;
    access_.write(item, value);
    print(valueLines(item, value), "written", valueMembers(item, value));
    if (options_.verify)
        for (const RegisterAccess::Mismatch& any : access_.verified(item, value))
            printMismatch(any);
}

void RegisterRun::printMismatch(const RegisterAccess::Mismatch& mismatch) {
    verdict_ = differsError;
    print("Did not take: " + changeLines(*mismatch.item, mismatch.written, mismatch.read),
          "mismatch", changeMembers({mismatch.item, mismatch.written, mismatch.read}));
}

void RegisterRun::dump() {
    const RegisterSnapshot snapshot = access_.dump(options_.all);
    if (!options_.file.empty())
        saveSnapshot(catalog_, snapshot, options_.file);
    if (lines_->isJson()) {
        for (const auto& [name, value] : snapshot.values)
            print("", "register", valueMembers(catalog_.item(name), value));
    } else if (options_.file.empty()) {
        std::string text = snapshotText(catalog_, snapshot);
        text.pop_back(); // the line ends itself
        lines_->printLine(text);
    }
}

void RegisterRun::compare() {
    for (const SnapshotDifference& any : differences(catalog_, snapshot_, access_.now(snapshot_))) {
        verdict_ = differsError;
        print(differenceLines(any), "difference", changeMembers(any));
    }
}

void RegisterRun::load() {
    const RegisterAccess::Loaded loaded = access_.load(snapshot_, options_.verify);
    for (const RegisterItem* item : loaded.written) {
        const std::uint64_t value = snapshot_.find(item->name)->value;
        print(valueLines(*item, value), "written", valueMembers(*item, value));
    }
    for (const RegisterAccess::Mismatch& any : loaded.mismatches)
        printMismatch(any);
}

void RegisterRun::watch() {
    std::int64_t due = clock().nanoseconds();
    for (int pass = 0; options_.times == 0 || pass < options_.times; ++pass) {
        waitUntil(due);
        watchOnce();
        due = std::max(due + options_.every, clock().nanoseconds());
    }
}

void RegisterRun::watchOnce() {
    constexpr double millisecondsOfSecond = 1000;
    for (const RegisterItem* item : items_) {
        const std::uint64_t value = access_.read(*item);
        const auto last = watched_.find(item);
        if (last != watched_.end() && last->second == value)
            continue;
        const SnapshotDifference change{
            item, last == watched_.end() ? std::nullopt : std::optional(last->second), value};
        const std::string fields =
            change.before ? changedFields(*item, *change.before, value) : item->summaryOf(value);
        print(fmt::format("{:10.3f} s  {} 0x{}{}{}", lines_->milliseconds() / millisecondsOfSecond,
                          item->name, item->hexOf(value), fields.empty() ? "" : "  ", fields),
              "change",
              fmt::format(R"("ms":{:.3f},{})", lines_->milliseconds(), changeMembers(change)));
        watched_[item] = value;
    }
}

} // namespace bitlux
