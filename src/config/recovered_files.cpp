#include "config/recovered_files.h"

#include "config/recovered_origin.h"
#include "platform/failure.h"
#include "platform/text_file.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <tuple>
#include <utility>

#include <sys/stat.h>

#include <fmt/chrono.h>
#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view prefix = "recovered-";
constexpr std::int64_t nanosecondsOfSecond = 1'000'000'000;

std::int64_t timeOf(const std::string& fileName) {
    struct stat status {};
    if (::stat(fileName.c_str(), &status) != 0)
        return 0;
    return status.st_mtim.tv_sec * nanosecondsOfSecond + status.st_mtim.tv_nsec;
}

std::string madeFolder(std::string folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (folder.empty() || !fs::is_directory(folder, error))
        throw Failure(Failure::Kind::File,
                      fmt::format("The folder \"{}\" cannot be made.", folder));
    return folder;
}

} // namespace

RecoveredFiles::RecoveredFiles(std::string folder)
    : folder_(madeFolder(std::move(folder))),
      gone_(RunningMarker::takeLeft(folder_)),
      marker_(folder_) {
    for (const std::string& owner : gone_) {
        const std::optional<std::string> file = giveUp(owner);
        if (file && (!left_ || left_->time <= timeOf(*file)))
            left_ = {.fileName = *file, .origin = originIn(*file), .time = timeOf(*file)};
    }
    removeOldest();
}

void RecoveredFiles::keepDraft(std::string_view content, const std::string& origin) {
    std::string text(content);
    text += fmt::format("\"{}\",\"{}\"\r\n", recoveredFromKey, escapedName(origin));
    replaceFile(draftOf(marker_.name()), text);
}

bool RecoveredFiles::hasDraft() const {
    std::error_code error;
    return fs::exists(draftOf(marker_.name()), error);
}

void RecoveredFiles::dropDraft() const {
    std::error_code error;
    fs::remove(draftOf(marker_.name()), error);
}

bool RecoveredFiles::adopt(const std::string& fileName) const {
    std::error_code error;
    fs::rename(fileName, draftOf(marker_.name()), error);
    return !error;
}

void RecoveredFiles::giveUpDraft() {
    if (giveUp(marker_.name()))
        removeOldest();
}

std::vector<RecoveredFile> RecoveredFiles::list() const {
    std::vector<RecoveredFile> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().filename().string().starts_with(prefix)) {
            const std::string name = entry->path().string();
            files.push_back({.fileName = name, .origin = originIn(name), .time = timeOf(name)});
        }
    std::sort(files.begin(), files.end(), [](const RecoveredFile& a, const RecoveredFile& b) {
        return std::tie(a.time, a.fileName) > std::tie(b.time, b.fileName);
    });
    return files;
}

std::string RecoveredFiles::draftOf(const std::string& owner) const {
    return fmt::format("{}/draft-{}.spi", folder_, owner);
}

std::optional<std::string> RecoveredFiles::giveUp(const std::string& owner) const {
    const std::string draft = draftOf(owner);
    const std::time_t time = timeOf(draft) / nanosecondsOfSecond;
    std::error_code error;
    std::string name;
    int number = 0; // of those of one second, in their order
    do
        name = fmt::format("{}/{}{:%Y%m%d-%H%M%S}-{}-{:03}.spi", folder_, prefix,
                           fmt::localtime(time), owner, ++number);
    while (fs::exists(name, error));
    fs::rename(draft, name, error);
    return error ? std::nullopt : std::optional(name);
}

void RecoveredFiles::removeOldest() const {
    const std::vector<RecoveredFile> files = list();
    std::error_code error;
    for (std::size_t i = most; i < files.size(); ++i)
        fs::remove(files[i].fileName, error);
}

} // namespace bitlux
