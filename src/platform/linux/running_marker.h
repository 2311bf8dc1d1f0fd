#pragma once

#include <string>
#include <vector>

namespace bitlux {

/// A file "running-NAME" that is locked for as long as its owner lives. The lock goes with the
/// process; the file stays when nobody was left to remove it, which is how a later process learns
/// of the end.
class RunningMarker {
public:
    /// Makes one in a folder that exists; raises Failure (File) when it cannot.
    explicit RunningMarker(const std::string& folder);
    /// Removes it.
    ~RunningMarker();
    RunningMarker(const RunningMarker&) = delete;
    RunningMarker& operator=(const RunningMarker&) = delete;

    /// No other marker in the folder has this name.
    [[nodiscard]] const std::string& name() const { return name_; }
    /// The file stays, as if the process had been killed.
    void leaveBehind() { leftBehind_ = true; }

    /// The names of the markers in a folder whose owners have gone; the files are removed, so that
    /// one process alone gets to know each. Those of others that live stay as they are.
    static std::vector<std::string> takeLeft(const std::string& folder);

private:
    std::string file_;
    std::string name_;
    int descriptor_ = -1;
    bool leftBehind_ = false;
};

} // namespace bitlux
