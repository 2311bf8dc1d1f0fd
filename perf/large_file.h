#pragma once

#include <fstream>
#include <string>

namespace bitlux::perf {

/// Writes a configuration file of so many Quick Commands of 32 bits; each holds its number.
inline void writeLargeFile(const std::string& name, int commands) {
    std::ofstream file(name, std::ios::binary);
    file << "\"Bitlux Configuration File (Version 3.x.x)\",\"Verification Line\"\r\n"
            "\"[SPIWordLength]\",\"32\"\r\n\"[BinaryMode]\",#FALSE#\r\n\"[ApplyNow]\",\"\"\r\n";
    for (int n = 0; n < commands; ++n) {
        file << R"("[QuickCommand]",")";
        for (int bit = 31; bit >= 0; --bit)
            file << ((n >> bit) % 2 != 0 ? "1 " : "0 ");
        file << "Command number " << n << "\"\r\n";
    }
}

} // namespace bitlux::perf
