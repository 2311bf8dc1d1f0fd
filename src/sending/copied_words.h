#pragma once

#include <string>
#include <vector>

namespace bitlux {

/// A word that is to be sent again by other means.
struct CopiedWord {
    int bits = 0;
    int type = 1; ///< 1 to 8
    bool msbFirst = true;
    std::string digits; ///< hexadecimal, one for each started group of four bits
};

// Texts for words, in their order. Words of one shape that follow each other go together. Lines end
// in a line feed; nothing without words.

/// Calls of a script that has a bench `b`.
std::string pythonText(const std::vector<CopiedWord>& words);
/// Commands `bitlux send` for a shell. `options`, without those of the shape, precede
/// the words; what a shell would not take literally is quoted.
std::string commandLineText(const std::vector<CopiedWord>& words,
                            const std::vector<std::string>& options);
/// Definitions of arrays of bytes, the most significant byte of a word first, as a comment says.
std::string cBytesText(const std::vector<CopiedWord>& words);

} // namespace bitlux
