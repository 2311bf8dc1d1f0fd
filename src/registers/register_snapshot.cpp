#include "registers/register_snapshot.h"

#include "chips/chip_library.h"
#include "chips/chip_reader.h"
#include "chips/document.h"
#include "chips/table_reader.h"
#include "platform/documents/parser_guard.h"
#include "platform/failure.h"
#include "platform/printable.h"
#include "platform/text_file.h"
#include "registers/names.h"

#include <algorithm>
#include <map>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr const char* headTable = "snapshot";
constexpr const char* valuesTable = "values";

using chips::Node;
using chips::Problems;

/// A string of TOML; titles have no control characters.
std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

std::optional<Node> documentOf(const std::string& fileName, Problems& problems) {
    chips::ChipText file = chips::readChipText(fileName);
    problems = std::move(file.problems);
    if (!problems.empty())
        return std::nullopt;
    if (std::optional<chips::Problem> problem = documents::unbearable(file.text)) {
        problems.push_back(*std::move(problem));
        return std::nullopt;
    }
    return chips::parseDocument(file.text, problems);
}

void readValues(const Node& values, RegisterSnapshot& snapshot, Problems& problems) {
    const Node::Table* table = values.table();
    if (table == nullptr)
        return;
    chips::TableReader reader(values, problems);
    for (const Node::Entry& entry : *table)
        if (const std::optional<std::uint64_t> value = reader.word(entry.key))
            snapshot.values.push_back({entry.key, *value});
}

Failure badFile(const std::string& fileName, const std::string& text) {
    constexpr std::size_t longestName = 4096;
    return {Failure::Kind::File, fmt::format("{}: {}", printable(fileName, longestName), text)};
}

} // namespace

const RegisterSnapshot::Value* RegisterSnapshot::find(std::string_view name) const {
    const auto found = std::find_if(values.begin(), values.end(),
                                    [name](const Value& any) { return any.name == name; });
    return found == values.end() ? nullptr : &*found;
}

std::vector<SnapshotDifference> differences(const RegisterCatalog& catalog,
                                            const RegisterSnapshot& before,
                                            const RegisterSnapshot& after) {
    std::vector<SnapshotDifference> found;
    const auto valueIn = [](const RegisterSnapshot& snapshot, const std::string& name) {
        const RegisterSnapshot::Value* value = snapshot.find(name);
        return value == nullptr ? std::nullopt : std::optional(value->value);
    };
    for (const RegisterItem& item : catalog.items()) {
        const SnapshotDifference both{&item, valueIn(before, item.name), valueIn(after, item.name)};
        const bool isCompared = !item.isRegister || !item.owner->isVolatile;
        if (isCompared && both.before != both.after)
            found.push_back(both);
    }
    return found;
}

std::vector<FieldDifference> fieldDifferences(const RegisterItem& item, std::uint64_t before,
                                              std::uint64_t after) {
    std::vector<FieldDifference> found;
    for (const NamedField& any : item.fields) {
        const FieldDifference both{&any, any.bits.taken(before), any.bits.taken(after)};
        if (both.before != both.after && (any.appliesTo(before) || any.appliesTo(after)))
            found.push_back(both);
    }
    return found;
}

std::string changedFields(const RegisterItem& item, std::uint64_t before, std::uint64_t after) {
    constexpr std::size_t longestText = 1000;
    std::string text;
    for (const FieldDifference& any : fieldDifferences(item, before, after))
        text += fmt::format("{}{} {} -> {}", text.empty() ? "" : ", ",
                            printable(any.field->name, longestText),
                            printable(any.field->shown(any.before), longestText),
                            printable(any.field->shown(any.after), longestText));
    return text;
}

std::string snapshotText(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot) {
    std::string text =
        fmt::format("[{}]\nchip = {}\n\n[{}]\n", headTable, quoted(snapshot.chip), valuesTable);
    for (const auto& [name, value] : snapshot.values) {
        const RegisterItem* item = catalog.find(name);
        const std::string number =
            fmt::format("0x{}", item != nullptr ? item->hexOf(value) : fmt::format("{:X}", value));
        const bool fitsToml = value >> 63 == 0;
        text += quoted(name) + " = " + (fitsToml ? number : quoted(number));
        const std::string fields = item != nullptr ? item->summaryOf(value) : "";
        text += (fields.empty() ? "" : " # " + fields) + "\n";
    }
    return text;
}

void saveSnapshot(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot,
                  const std::string& fileName) {
    replaceFile(fileName, snapshotText(catalog, snapshot));
}

bool isSnapshotFile(const std::string& fileName) {
    Problems problems;
    const std::optional<Node> document = documentOf(fileName, problems);
    return document && document->find(headTable) != nullptr;
}

RegisterSnapshot readSnapshot(const std::string& fileName) {
    Problems problems;
    RegisterSnapshot snapshot;
    if (const std::optional<Node> document = documentOf(fileName, problems)) {
        chips::TableReader reader(*document, problems);
        chips::TableReader head(reader.section(headTable), problems);
        snapshot.chip = head.required("chip");
        readValues(reader.section(valuesTable), snapshot, problems);
    }
    if (!problems.empty())
        throw Failure(Failure::Kind::File, chips::describe(problems, fileName));
    return snapshot;
}

RegisterSnapshot fitted(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot,
                        const std::string& fileName) {
    if (snapshot.chip != catalog.chip().name)
        throw badFile(fileName, fmt::format("this is a snapshot of {}, not of {}",
                                            printable(snapshot.chip), catalog.chip().name));
    std::map<const RegisterItem*, std::uint64_t> known;
    for (const auto& [name, value] : snapshot.values) {
        const RegisterItem* item = catalog.find(name);
        if (item == nullptr)
            throw badFile(fileName, fmt::format("{} has no register \"{}\"", catalog.chip().name,
                                                printable(name)));
        if ((value & ~item->mask()) != 0)
            throw badFile(fileName, fmt::format("0x{:X} does not fit: {} has {} bits", value,
                                                item->name, item->width));
        if (!known.emplace(item, value).second)
            throw badFile(fileName, fmt::format("{} is there twice", item->name));
    }
    RegisterSnapshot result{.chip = snapshot.chip, .values = {}};
    for (const RegisterItem& item : catalog.items())
        if (const auto found = known.find(&item); found != known.end())
            result.values.push_back({item.name, found->second});
    return result;
}

} // namespace bitlux
