#include "platform/linux/kernel_values.h"

#include "platform/linux/file_start.h"

#include <algorithm>

namespace bitlux {

std::string kernelLine(const std::string& fileName) {
    constexpr std::size_t mostBytes = 4096;
    std::string text = readFileStart(fileName, mostBytes).bytes;
    text.erase(std::find(text.begin(), text.end(), '\n'), text.end());
    return text;
}

} // namespace bitlux
