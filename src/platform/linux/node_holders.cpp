#include "platform/linux/node_holders.h"

#include "platform/conversions.h"
#include "platform/linux/file_start.h"
#include "platform/printable.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

/// Processes start and end meanwhile; a folder that has disappeared ends the search silently.
template <typename Visit>
void forEachEntry(const fs::path& folder, Visit visit) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        visit(entry->path());
}

std::string nameOf(const fs::path& process) {
    const std::string name = readFileStart(process / "comm", 64).bytes;
    return printable(std::string_view(name).substr(0, std::min(name.find('\n'), name.size())), 32);
}

} // namespace

std::vector<NodeHolder> findHolders(const std::string& node, const std::string& processes) {
    std::vector<NodeHolder> found;
    forEachEntry(processes, [&](const fs::path& process) {
        const std::optional<int> number = wholeNumber<int>(process.filename().string());
        if (!number)
            return;
        bool holds = false;
        forEachEntry(process / "fd", [&](const fs::path& link) {
            std::error_code gone;
            holds = holds || fs::read_symlink(link, gone) == node;
        });
        if (holds)
            found.push_back({*number, nameOf(process)});
    });
    std::sort(found.begin(), found.end(),
              [](const NodeHolder& a, const NodeHolder& b) { return a.process < b.process; });
    return found;
}

std::string holdersText(const std::vector<NodeHolder>& holders) {
    std::vector<std::string> texts;
    for (const NodeHolder& holder : holders)
        texts.push_back(fmt::format("{} (process {})", holder.name, holder.process));
    return fmt::format("{}", fmt::join(texts, ", "));
}

} // namespace bitlux
