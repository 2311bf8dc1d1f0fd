#include "panels/common/panel_snapshots.h"

#include "platform/failure.h"
#include "registers/register_access.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr const char* snapshotFilter = "Register snapshot (*.toml)|*.toml";
constexpr const char* compareTitle = "Compare";
constexpr const char* writeTitle = "Write Snapshot";

std::string registers(std::size_t count) {
    return fmt::format("{} register{}", count, count == 1 ? "" : "s");
}

/// Names of registers, the first ones when there are many.
std::string namesIn(const RegisterSnapshot& snapshot) {
    constexpr std::size_t most = 12;
    std::string text;
    for (std::size_t i = 0; i < std::min(snapshot.values.size(), most); ++i)
        text += (i > 0 ? ", " : "") + snapshot.values[i].name;
    if (snapshot.values.size() > most)
        text += fmt::format(" and {} more", snapshot.values.size() - most);
    return text;
}

} // namespace

PanelSnapshots::PanelSnapshots(forms::Form& form, chips::ChipPtr chip, PanelControls& controls,
                               PanelWords& words, RegisterPages& pages,
                               const PanelSurroundings& outside)
    : chip_(std::move(chip)), controls_(controls), words_(words), pages_(pages), outside_(outside) {
    form.procedure("SaveSnapshot", [this] { SaveSnapshot(); });
    form.procedure("CompareSnapshot", [this] { CompareSnapshot(); });
    form.procedure("WriteSnapshot", [this] { WriteSnapshot(); });
    form.procedure("ClearMarks", [this] { ClearMarks(); });
    form.variable("CheckWrites", CheckWrites);
    form.variable("SnapshotReport", [this] { return forms::Value(report_.text()); }, {});
    words_.wasWritten = [this](const chips::Register& target) { forget(&target, nullptr); };
    words_.wasRead = [this](const chips::View& view) { forget(nullptr, &view); };
    pages_.written = [this](const chips::Register& target, std::uint64_t value) {
        if (CheckWrites)
            check(target, value);
    };
}

const RegisterCatalog& PanelSnapshots::catalog() {
    if (!catalog_)
        catalog_ = std::make_unique<RegisterCatalog>(chip_);
    return *catalog_;
}

void PanelSnapshots::requireSendable() const {
    if (!words_.hasOrder())
        throw Failure(Failure::Kind::OutOfRange,
                      "The words of this chip need the most significant bit first. "
                      "Nothing was sent.");
}

// Snapshots

void PanelSnapshots::SaveSnapshot() {
    requireSendable();
    const std::optional<std::string> file =
        outside_.desk.fileDialogs.ask({.kind = FileDialog::Kind::Save,
                                       .title = "Save Snapshot",
                                       .filter = snapshotFilter,
                                       .fileName = chip_->name + "-snapshot.toml"});
    if (!file)
        return;
    if (const std::optional<RegisterSnapshot> now = readAll(nullptr))
        saveSnapshot(catalog(), *now, *file);
}

std::optional<PanelSnapshots::Chosen> PanelSnapshots::choose(const char* title) {
    requireSendable();
    const std::optional<std::string> file = outside_.desk.fileDialogs.ask(
        {.kind = FileDialog::Kind::Open, .title = title, .filter = snapshotFilter, .fileName = {}});
    if (!file)
        return {};
    return Chosen{.name = std::filesystem::path(*file).filename().string(),
                  .snapshot = fitted(catalog(), readSnapshot(*file), *file)};
}

void PanelSnapshots::CompareSnapshot() {
    std::optional<Chosen> chosen = choose(compareTitle);
    if (!chosen)
        return;
    const std::optional<RegisterSnapshot> now = readAll(&chosen->snapshot);
    if (!now)
        return;
    ClearMarks();
    for (const Value& any : now->values)
        showRead(catalog().item(any.name), any.value,
                 any.value ^ chosen->snapshot.find(any.name)->value);
    reportCompared(*std::move(chosen), *now);
}

void PanelSnapshots::reportCompared(Chosen chosen, const RegisterSnapshot& now) {
    std::vector<Value>& wanted = chosen.snapshot.values;
    const std::size_t left = wanted.size() - now.values.size();
    std::erase_if(wanted, [&now](const Value& any) { return now.find(any.name) == nullptr; });
    Differences found = differences(catalog(), chosen.snapshot, now);
    std::string heading = fmt::format("Different from {}: {} of {}.", chosen.name, found.size(),
                                      registers(now.values.size()));
    if (left > 0)
        heading += fmt::format(" Not compared, as no read leaves them alone: {}.", left);
    publish({.title = compareTitle,
             .heading = std::move(heading),
             .before = "Snapshot",
             .after = "Chip",
             .lines = std::move(found)});
}

void PanelSnapshots::WriteSnapshot() {
    const std::optional<Chosen> chosen = choose(writeTitle);
    if (!chosen)
        return;
    const std::optional<RegisterSnapshot> now = readAll(&chosen->snapshot);
    if (!now)
        return;
    const RegisterSnapshot plan = toWrite(chosen->snapshot, *now);
    if (plan.values.empty())
        return reportWritten(
            fmt::format("Nothing was written: no register differs from {}.", chosen->name), {});
    if (!isConfirmed(plan, chosen->name))
        return;
    ClearMarks();
    Differences refused;
    const std::size_t count = writeAll(plan, refused);
    const std::string result = outside_.session.WordAnswered
                                   ? fmt::format("Did not take: {}.", refused.size())
                                   : "Then the chip did not answer.";
    reportWritten(
        fmt::format("Written: {} of {}. {}", count, registers(plan.values.size()), result),
        std::move(refused));
}

void PanelSnapshots::reportWritten(std::string heading, Differences refused) {
    publish({.title = writeTitle,
             .heading = std::move(heading),
             .before = "Written",
             .after = "Read back",
             .lines = std::move(refused)});
}

RegisterSnapshot PanelSnapshots::toWrite(const RegisterSnapshot& wanted,
                                         const RegisterSnapshot& now) {
    RegisterSnapshot plan{.chip = wanted.chip, .values = {}};
    for (const Value& any : wanted.values) {
        const RegisterItem& item = catalog().item(any.name);
        const Value* read = now.find(any.name);
        const bool isSame =
            read != nullptr && RegisterAccess::differingBits(item, any.value, read->value) == 0;
        if (item.isRestorable() && !isSame)
            plan.values.push_back(any);
    }
    return plan;
}

bool PanelSnapshots::isConfirmed(const RegisterSnapshot& plan, const std::string& file) const {
    const MessageBox question{.text = fmt::format("Write {} of the {} that differ from {}?{}{}",
                                                  registers(plan.values.size()), chip_->title, file,
                                                  lineBreak, namesIn(plan)),
                              .title = writeTitle,
                              .buttons = MessageBox::Buttons::YesNo,
                              .icon = MessageBox::Icon::Question,
                              .preset = MessageBox::Answer::No};
    return outside_.desk.boxes.show(question) == MessageBox::Answer::Yes;
}

void PanelSnapshots::publish(SnapshotReport report) {
    report_ = std::move(report);
    reported.raise();
}

// Words

bool PanelSnapshots::isHarmless(const RegisterItem& item) const {
    return item.readsHarmlessly() && (item.view->on.empty() || pages_.isThere(*item.view));
}

std::optional<std::uint64_t> PanelSnapshots::read(const RegisterItem& item) const {
    const std::uint64_t value = words_.fetch(*item.view) & item.mask();
    return outside_.session.WordAnswered ? std::optional(value) : std::nullopt;
}

std::optional<RegisterSnapshot> PanelSnapshots::readAll(const RegisterSnapshot* only) {
    const Hourglass hourglass(outside_.desk.pointer);
    RegisterSnapshot snapshot{.chip = chip_->name, .values = {}};
    for (const RegisterItem& item : catalog().items()) {
        if (!isHarmless(item) || (only != nullptr && only->find(item.name) == nullptr))
            continue;
        const std::optional<std::uint64_t> value = read(item);
        if (!value)
            return {};
        snapshot.values.push_back({item.name, *value});
    }
    return snapshot;
}

std::size_t PanelSnapshots::writeAll(const RegisterSnapshot& plan, Differences& refused) {
    const Hourglass hourglass(outside_.desk.pointer);
    std::size_t count = 0;
    for (const auto& [name, value] : plan.values) {
        const RegisterItem& item = catalog().item(name);
        words_.put(*item.owner, value);
        if (!outside_.session.WordAnswered)
            break;
        ++count;
        if (isAlone(*item.owner))
            pages_.adopt(*item.owner, value);
        if (!isHarmless(item))
            continue;
        const std::optional<std::uint64_t> now = read(item);
        if (!now)
            break;
        if (markRefused(item, value, *now) != 0)
            refused.push_back({&item, value, *now});
    }
    return count;
}

void PanelSnapshots::check(const chips::Register& target, std::uint64_t value) {
    const auto& items = catalog().items();
    const auto item = std::find_if(items.begin(), items.end(), [&target](const RegisterItem& any) {
        return any.isRegister && any.owner == &target;
    });
    if (item == items.end() || target.access != chips::Access::ReadWrite || !isHarmless(*item) ||
        !outside_.session.WordAnswered)
        return;
    if (const std::optional<std::uint64_t> now = read(*item))
        markRefused(*item, value, *now);
}

// Rows

bool PanelSnapshots::hasRow(const chips::Row& row) {
    return row.exists() && row.form.empty();
}

std::uint64_t PanelSnapshots::markRefused(const RegisterItem& item, std::uint64_t written,
                                          std::uint64_t read) {
    const std::uint64_t bits = RegisterAccess::differingBits(item, written, read);
    const chips::Row& row = item.owner->row;
    const chips::Row& shown = item.view->row;
    if (hasRow(row))
        mark(row, bits);
    if (shown.first != row.first)
        showRead(item, read, bits);
    return bits;
}

void PanelSnapshots::showRead(const RegisterItem& item, std::uint64_t value, std::uint64_t bits) {
    if (!hasRow(item.view->row))
        return;
    pages_.show(*item.view, value);
    mark(item.view->row, bits);
}

bool PanelSnapshots::isAlone(const chips::Register& owner) const {
    const auto sharing = [&owner](const chips::Register& any) {
        return any.row.exists() && any.row.first == owner.row.first;
    };
    return owner.row.form.empty() &&
           std::count_if(chip_->registers.begin(), chip_->registers.end(), sharing) <= 1;
}

void PanelSnapshots::mark(const chips::Row& row, std::uint64_t bits) {
    if (!hasRow(row))
        return;
    controls_.row(row.first).mark(bits);
    isMarked_ = isMarked_ || bits != 0;
}

void PanelSnapshots::ClearMarks() {
    if (!std::exchange(isMarked_, false))
        return;
    for (const RegisterItem& item : catalog().items()) {
        mark(item.owner->row, 0);
        if (item.view != nullptr)
            mark(item.view->row, 0);
    }
}

void PanelSnapshots::forget(const chips::Register* target, const chips::View* view) {
    if (!isMarked_)
        return;
    for (const RegisterItem& item : catalog().items()) {
        const bool isMeant =
            target != nullptr ? item.isRegister && item.owner == target : item.view == view;
        if (!isMeant)
            continue;
        if (item.isRegister)
            mark(item.owner->row, 0);
        if (item.view != nullptr)
            mark(item.view->row, 0);
    }
}

} // namespace bitlux
