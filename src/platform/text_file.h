#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace bitlux {

/// Replaces a file as a whole: either the name has all of the new content afterwards, or the old
/// file is untouched. An existing file keeps its permissions and, as far as the system allows, its
/// owner; a link keeps pointing to its file. Where the folder does not allow another file, the old
/// one is overwritten.
///
/// Raises Failure (File) with a sentence that names the file and the reason.
void replaceFile(const std::string& fileName, std::string_view content);

/// The same line by line. `write` is called once with a function that takes a line without its end;
/// each line ends in carriage return and line feed.
void replaceTextFile(
    const std::string& fileName,
    const std::function<void(const std::function<void(std::string_view)>&)>& write);

/// Adds a line with carriage return and line feed to the end of a file, which is created when it
/// does not exist. Raises Failure (File) as replaceFile does; nothing of the line is in the file
/// then.
void appendLine(const std::string& fileName, std::string_view line);

} // namespace bitlux
