#pragma once

#include <string>
#include <vector>

namespace bitlux {

/// A file "running-NAME" that is locked for as long as its owner lives. The lock is released with
/// the process. A file that was not removed tells a later process that its owner was killed.
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
    /// Leaves the file, as if the process had been killed.
    void leaveBehind() { leftBehind_ = true; }

    /// The names of the markers in a folder whose owners have ended. Their files are removed, so
    /// that only one process learns of each. Markers of running processes are not touched.
    static std::vector<std::string> takeLeft(const std::string& folder);

private:
    std::string file_;
    std::string name_;
    int descriptor_ = -1;
    bool leftBehind_ = false;
};

} // namespace bitlux
