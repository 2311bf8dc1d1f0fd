#pragma once

#include "platform/linux/running_marker.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// A configuration that was kept without being saved.
struct RecoveredFile {
    std::string fileName;
    std::string origin; ///< full name of the file that was changed; empty for none
    std::int64_t time;  ///< when it was kept, in nanoseconds since 1970
};

/// The unsaved work of the programs of a user, as configuration files in a folder: a draft of each
/// running program, and the last discarded ones. The next program finds the draft of a killed one.
/// Programs that run at the same time do not touch each other's drafts.
class RecoveredFiles {
public:
    static constexpr std::size_t most = 10;

    /// Takes over the drafts of killed programs; creates the folder if necessary. Raises Failure
    /// (File) when it cannot.
    explicit RecoveredFiles(std::string folder);

    /// Saves the draft, replacing the previous one; raises Failure (File) as replaceFile does.
    void keepDraft(std::string_view content, const std::string& origin);
    [[nodiscard]] bool hasDraft() const;
    /// Removes the draft, since the work was saved.
    void dropDraft() const;
    /// One of the list becomes the draft; false when it no longer exists.
    bool adopt(const std::string& fileName) const;
    /// Discards the draft: it joins the last ones, and the oldest beyond `most` is deleted.
    void giveUpDraft();
    /// The program ends without a question: the next one finds the draft as after a crash.
    void leaveDraft() { marker_.leaveBehind(); }

    /// The discarded ones, the newest first.
    [[nodiscard]] std::vector<RecoveredFile> list() const;
    /// The newest one that a killed program has left; reported only to the program that found it.
    [[nodiscard]] const std::optional<RecoveredFile>& left() const { return left_; }

private:
    [[nodiscard]] std::string draftOf(const std::string& owner) const;
    /// The name that it then has; nothing without a draft.
    [[nodiscard]] std::optional<std::string> giveUp(const std::string& owner) const;
    void removeOldest() const;

    std::string folder_;
    std::vector<std::string> gone_; ///< killed programs, by their markers
    RunningMarker marker_;
    std::optional<RecoveredFile> left_;
};

} // namespace bitlux
