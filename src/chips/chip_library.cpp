#include "chips/chip_library.h"

#include "chips/embedded_chips.h"
#include "chips/register_reader.h"
#include "platform/failure.h"
#include "platform/forms/near_names.h"
#include "platform/linux/user_folder.h"
#include "platform/printable.h"
#include "platform/text_file.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <mutex>

#include <sys/stat.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::chips {

namespace {

namespace fs = std::filesystem;

constexpr const char* ending = ".toml";
constexpr std::size_t longestName = 1000;

[[noreturn]] void refuseName(std::string_view name, const std::vector<std::string>& names) {
    const std::vector<std::string> near = forms::nearNames(name, names);
    const std::string text = fmt::format("There is no chip \"{}\"", printable(name, longestName));
    throw Failure(Failure::Kind::OutOfRange,
                  near.empty() ? text
                               : fmt::format("{}. Did you mean {}?", text, fmt::join(near, ", ")));
}

const EmbeddedChip* findEmbedded(std::string_view name) {
    for (const EmbeddedChip& any : embeddedChips())
        if (any.name == name)
            return &any;
    return nullptr;
}

ChipPtr read(const EmbeddedChip& any) {
    const std::string file = fmt::format("{}{}", any.name, ending);
    ChipFile result = readCheckedChip(any.text, file);
    if (!result.chip) // the build has checked it
        throw Failure(Failure::Kind::File, describe(result.problems, file));
    return result.chip;
}

/// Calls `visit` with the chip files of a folder; inaccessible ones are skipped.
void eachFile(const std::string& folder, const std::function<void(const fs::path& file)>& visit) {
    if (folder.empty())
        return;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const fs::path& file = entry->path();
        std::error_code unknown;
        if (file.extension() == ending && !file.filename().native().starts_with('.') &&
            entry->is_regular_file(unknown))
            visit(file);
    }
}

std::vector<std::string> chipFolders() {
    std::vector<std::string> folders = dataFolders();
    for (std::string& folder : folders)
        if (!folder.empty())
            folder += "/chips";
    return folders;
}

/// Variants are devices of the chips of the product.
ChipPtr namedChip(ChipLibrary& library, const std::string& name) {
    const std::vector<ChipLibrary::Entry> entries = library.entries();
    const bool isChip = std::any_of(entries.begin(), entries.end(),
                                    [&name](const auto& any) { return any.name == name; });
    for (const ChipLibrary::Entry& any : entries)
        if (!isChip && any.file.empty() && embeddedChip(any.name)->findDevice(name) != nullptr)
            return embeddedChip(any.name);
    return library.chip(name);
}

} // namespace

ChipPtr embeddedChip(std::string_view name) {
    static std::mutex guard; // tests and scripts may run several programs at once
    static std::map<std::string, ChipPtr, std::less<>> known;
    const std::lock_guard lock(guard);
    if (const auto found = known.find(name); found != known.end())
        return found->second;
    if (const EmbeddedChip* found = findEmbedded(name))
        return known.emplace(name, read(*found)).first->second;
    std::vector<std::string> names;
    for (const EmbeddedChip& any : embeddedChips())
        names.emplace_back(any.name);
    refuseName(name, names);
}

std::string describe(const Problems& problems, const std::string& file) {
    std::string text;
    for (const Problem& problem : problems)
        text += (text.empty() ? "" : "\n") + describe(problem, file);
    return text;
}

ChipPtr chosenChip(ChipLibrary& library, const std::string& nameOrFile) {
    if (nameOrFile.find('/') == std::string::npos && !nameOrFile.ends_with(".toml"))
        return namedChip(library, nameOrFile);
    ChipFile file = readChipFile(nameOrFile);
    if (!file.chip)
        throw Failure(Failure::Kind::File, describe(file.problems, nameOrFile));
    return file.chip;
}

Problems problemsOfUsersChip(const Chip& chip) {
    constexpr Place head{.line = 1, .column = 1};
    Problems problems;
    const auto add = [&problems](const Place& at, std::string_view text, std::string_view advice) {
        Problem& made = problems.emplace_back();
        made.at = at;
        made.text = text;
        made.advice = advice;
    };
    const PanelLayout& panel = chip.panel;
    if (findEmbedded(chip.name) != nullptr)
        add(head, fmt::format("the program has a chip \"{}\" of its own", chip.name),
            "Give the chip another `name`, and its file the same.");
    if (panel.form != "Panel_" + identifier(chip.name))
        add(panel.at, "only chips of the program name their `form`", "Remove it.");
    if (!panel.parts.empty() || !panel.companions.empty() || !panel.active.empty() ||
        !panel.lastWord.empty() || !panel.texts.empty() || !panel.copies.empty())
        add(panel.at,
            "only chips of the program have `parts`, `companions`, `active`, `last_word`, `texts` "
            "and `copies`",
            "Remove them.");
    if (!chip.sheets.empty())
        add(chip.sheets.front().at, "only chips of the program have a `sheet`", "Remove it.");
    if (!chip.controls.empty())
        add(chip.controls.front().at, "only chips of the program have a `control`", "Remove it.");
    if (!chip.modelParts.empty())
        add(head, "only chips of the program have a `model`", "Remove it.");
    return problems;
}

ChipLibrary::ChipLibrary() : ChipLibrary(chipFolders()) {}

std::vector<ChipLibrary::Entry> ChipLibrary::entries() const {
    std::map<std::string, std::string> files;
    for (const EmbeddedChip& any : embeddedChips())
        files.emplace(any.name, "");
    for (const std::string& folder : folders_)
        eachFile(folder, [&files](const fs::path& file) {
            if (isChipName(file.stem().native()))
                files.emplace(file.stem(), file); // keeps the first one
        });
    std::vector<Entry> all;
    for (const auto& [name, file] : files)
        all.push_back({.name = name, .file = file});
    return all;
}

std::vector<std::string> ChipLibrary::names() const {
    std::vector<std::string> all;
    for (const Entry& entry : entries())
        all.push_back(entry.name);
    return all;
}

std::vector<std::string> ChipLibrary::leftOut() const {
    std::vector<std::string> reasons;
    for (const std::string& folder : folders_)
        eachFile(folder, [&reasons](const fs::path& file) {
            const std::string name = file.stem();
            const char* reason =
                findEmbedded(name) != nullptr ? "the program has a chip of this name of its own"
                : isChipName(name)            ? ""
                                   : "the name of a chip has letters, digits, - and _ alone";
            if (*reason != '\0')
                reasons.push_back(fmt::format("{} is left out: {}.",
                                              printable(file.native(), longestName), reason));
        });
    std::sort(reasons.begin(), reasons.end());
    return reasons;
}

std::string ChipLibrary::fileOf(std::string_view name) const {
    if (!isChipName(name) || findEmbedded(name) != nullptr)
        return {};
    for (const std::string& folder : folders_) {
        if (folder.empty())
            continue;
        std::string file = fmt::format("{}/{}{}", folder, name, ending);
        std::error_code error;
        if (fs::is_regular_file(file, error))
            return file;
    }
    return {};
}

void ChipLibrary::requireUsers(std::string_view name) const {
    if (findEmbedded(name) != nullptr)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("The chip \"{}\" is one of the program", name));
    if (!isUsers(name))
        refuseName(name, names());
}

ChipPtr ChipLibrary::chip(std::string_view name) {
    const auto found = known_.find(name);
    return found != known_.end() ? found->second.chip : refreshed(name);
}

ChipPtr ChipLibrary::refreshed(std::string_view name) {
    if (findEmbedded(name) != nullptr)
        return embeddedChip(name);
    const std::string file = fileOf(name);
    if (file.empty())
        refuseName(name, names());
    const auto found = known_.find(name);
    if (found != known_.end() && found->second.file == file && found->second.stamp == stampOf(file))
        return found->second.chip;
    return read(name, file);
}

ChipPtr ChipLibrary::read(std::string_view name, const std::string& file) {
    const Stamp stamp = stampOf(file); // before reading: a change meanwhile is noticed next time
    ChipFile result = readChipFile(file);
    if (result.chip) {
        result.problems = problemsOfUsersChip(*result.chip);
        if (result.chip->name != name)
            result.problems.push_back(
                {{.line = 1, .column = 1},
                 fmt::format(R"(the chip is named "{}", its file "{}")", result.chip->name, name),
                 fmt::format("Call the file {}{}, or leave `name` out.", result.chip->name,
                             ending)});
    }
    if (!result.problems.empty())
        throw Failure(Failure::Kind::File, describe(result.problems, file));
    known_.insert_or_assign(std::string(name),
                            Known{.chip = result.chip, .file = file, .stamp = stamp});
    return result.chip;
}

ChipLibrary::Stamp ChipLibrary::stampOf(const std::string& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0)
        return {};
    constexpr std::int64_t second = 1'000'000'000;
    return {.device = status.st_dev,
            .node = status.st_ino,
            .size = status.st_size,
            .changed = status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

ChipLibrary::Kept ChipLibrary::keep(const std::string& fileName, bool replaces) {
    using Outcome = Kept::Outcome;
    const auto refused = [](Problems problems) {
        return Kept{
            .outcome = Outcome::Refused, .name = {}, .file = {}, .problems = std::move(problems)};
    };
    ChipText source = readChipText(fileName);
    if (!source.problems.empty())
        return refused(std::move(source.problems));
    ChipFile result = readChip(source.text, fileName);
    if (result.chip)
        result.problems = problemsOfUsersChip(*result.chip);
    if (!result.problems.empty())
        return refused(std::move(result.problems));
    const std::string& name = result.chip->name;
    if (const std::string there = fileOf(name); !there.empty()) {
        if (readChipText(there).text == source.text)
            return {.outcome = Outcome::There, .name = name, .file = there, .problems = {}};
        if (!replaces)
            return {.outcome = Outcome::Exists, .name = name, .file = there, .problems = {}};
    }
    if (folders_.empty() || folders_.front().empty())
        throw Failure(Failure::Kind::File, "There is no home folder to keep the chip in");
    std::error_code error;
    fs::create_directories(folders_.front(), error);
    if (error)
        throw Failure(Failure::Kind::File, fmt::format("The folder \"{}\" cannot be made: {}.",
                                                       folders_.front(), error.message()));
    const std::string file = fmt::format("{}/{}{}", folders_.front(), name, ending);
    replaceFile(file, source.text);
    return {.outcome = Outcome::Done, .name = name, .file = file, .problems = {}};
}

} // namespace bitlux::chips
