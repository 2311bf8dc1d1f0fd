#pragma once

#include <string>
#include <string_view>

namespace bitlux {

/// A text file that grows while the program runs: what was added is in the file even if the program
/// crashes.
class GrowingFile {
public:
    /// Creates the file, or empties it. Raises Failure (File) with a sentence that names the file
    /// and the reason.
    explicit GrowingFile(std::string fileName);
    ~GrowingFile();
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;

    [[nodiscard]] const std::string& fileName() const { return fileName_; }

    /// Adds whole lines, each with its end. Raises Failure (File); nothing of them is in the file
    /// then.
    void add(std::string_view lines);

private:
    [[noreturn]] void fail(int error) const;

    std::string fileName_;
    int descriptor_;
};

} // namespace bitlux
