#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace bitlux {

/// Replaces a text file as a whole: either all of the new content stands under the name
/// afterwards, or the old file is untouched. `write` is called once with a function that takes
/// one line at a time, without its end; each line ends in carriage return and line feed.
/// A file that exists keeps its permissions; a name that is a link keeps pointing to its file.
///
/// Raises Failure (File) with a sentence that names the file and the reason.
void replaceTextFile(
    const std::string& fileName,
    const std::function<void(const std::function<void(std::string_view)>&)>& write);

} // namespace bitlux
