#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace bitlux {

/// A ZIP file in memory, of entries below 4 GB. Only the part of the format that a session needs; a
/// library would load its cryptography at every start of the window.
class ZipArchive {
public:
    void add(const std::string& name, std::span<const std::uint8_t> content);
    void add(const std::string& name, const std::string& content);

    /// The whole file; nothing is added afterwards.
    [[nodiscard]] std::string finish();

private:
    struct Entry {
        std::string name;
        std::uint32_t offset;
        std::uint32_t checksum;
        std::uint32_t packedSize;
        std::uint32_t size;
    };

    static std::string commonHeader(const Entry& entry);

    std::string file_;
    std::vector<Entry> entries_;
};

} // namespace bitlux
