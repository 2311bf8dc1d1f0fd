#pragma once

#include <string>
#include <string_view>

namespace bitlux {

// Text in files is in the single-byte code page Windows-1252, in the program in UTF-8. The five
// bytes that the code page leaves undefined are the control characters of the same code.

/// Accepts any bytes.
std::string toUtf8(std::string_view codePageText);

/// Raises Failure (Conversion), naming the character, when the code page lacks it.
std::string toCodePage(std::string_view utf8Text);

} // namespace bitlux
