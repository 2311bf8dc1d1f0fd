#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace bitlux {

/// Reads a text file line by line, however large it is. Lines end in line feed, with or without a
/// carriage return before it; the last one may have no end.
class LineReader {
public:
    static constexpr std::size_t longestLine = 1 << 16; ///< bytes

    /// Opens a file. Raises Failure (File) with a sentence when it cannot be read, or is a folder
    /// or a device.
    explicit LineReader(std::string fileName);
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// The next line without its end, valid until the next call; nothing after the last. Raises
    /// Failure (File) when the line is too long or the file cannot be read on.
    std::optional<std::string_view> next();

    /// Number of the line that `next` returned last, from 1.
    [[nodiscard]] std::size_t lineNumber() const { return lineNumber_; }
    [[nodiscard]] const std::string& fileName() const { return fileName_; }

private:
    /// Makes room and reads on; false at the end of the file.
    bool fill();

    std::string fileName_;
    int descriptor_;
    std::string buffer_; ///< what was read but not returned yet is from begin_ to end_
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::size_t lineNumber_ = 0;
};

} // namespace bitlux
