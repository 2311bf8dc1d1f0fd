#pragma once

#include "platform/linux/running_marker.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// A configuration that was kept although nobody saved it.
struct RecoveredFile {
    std::string fileName;
    std::string origin; ///< full name of the file that it is a change of; empty for none
    std::int64_t time;  ///< when it was kept, in nanoseconds since 1970
};

/// The unsaved work of the programs of a user, as configuration files in a folder: a draft of each
/// program that runs, and the last ones that were given up. The draft of a program that was killed
/// is found by the next one. Programs that run at once leave each other's drafts alone.
class RecoveredFiles {
public:
    static constexpr std::size_t most = 10;

    /// Takes over what programs that have gone left behind; makes the folder where there is none.
    /// Raises Failure (File) when that cannot be.
    explicit RecoveredFiles(std::string folder);

    /// Keeps the draft, over the one of before; raises Failure (File) as replaceFile does.
    void keepDraft(std::string_view content, const std::string& origin);
    [[nodiscard]] bool hasDraft() const;
    /// It is wanted no more: it was saved.
    void dropDraft() const;
    /// One of the list is the draft now; false when it has gone.
    bool adopt(const std::string& fileName) const;
    /// It is given up: it becomes one of the last ones, and the oldest beyond `most` goes.
    void giveUpDraft();
    /// The program ends and nobody was asked: the next one finds the draft as after a crash.
    void leaveDraft() { marker_.leaveBehind(); }

    /// Those that were given up, the newest first.
    [[nodiscard]] std::vector<RecoveredFile> list() const;
    /// The newest one that a program has left behind; told to the program that has found it alone.
    [[nodiscard]] const std::optional<RecoveredFile>& left() const { return left_; }

private:
    [[nodiscard]] std::string draftOf(const std::string& owner) const;
    /// The name that it has then; nothing without a draft.
    [[nodiscard]] std::optional<std::string> giveUp(const std::string& owner) const;
    void removeOldest() const;

    std::string folder_;
    std::vector<std::string> gone_; ///< programs that have left their markers
    RunningMarker marker_;
    std::optional<RecoveredFile> left_;
};

} // namespace bitlux
