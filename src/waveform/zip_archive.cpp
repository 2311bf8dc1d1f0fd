#include "waveform/zip_archive.h"

#include "platform/failure.h"

#define ZLIB_CONST // the input is only read
#include <zlib.h>

namespace bitlux {

namespace {

constexpr std::uint16_t version = 20; // the first with deflated entries
constexpr std::uint16_t deflated = 8;
constexpr std::uint16_t firstDay =
    (1U << 5U) | 1U; // 1980-01-01, so that equal words result in equal files

template <typename... Numbers>
std::string littleEndian(Numbers... numbers) {
    std::string bytes;
    const auto append = [&bytes](auto number) {
        for (std::size_t i = 0; i < sizeof number; ++i)
            bytes += static_cast<char>((number >> (8 * i)) & 0xFFU);
    };
    (append(numbers), ...);
    return bytes;
}

/// Without the header and the checksum of a stand-alone file.
std::string packed(std::span<const std::uint8_t> content) {
    constexpr int withoutHeader = -15;
    constexpr int usualMemory = 8;
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, withoutHeader, usualMemory,
                     Z_DEFAULT_STRATEGY) != Z_OK)
        throw Failure(Failure::Kind::File, "There is no memory to pack a file.");
    std::string result(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    stream.next_in = content.data();
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

} // namespace

void ZipArchive::add(const std::string& name, std::span<const std::uint8_t> content) {
    const std::string data = packed(content);
    const Entry entry{
        .name = name,
        .offset = static_cast<std::uint32_t>(file_.size()),
        .checksum =
            static_cast<std::uint32_t>(crc32(0, content.data(), static_cast<uInt>(content.size()))),
        .packedSize = static_cast<std::uint32_t>(data.size()),
        .size = static_cast<std::uint32_t>(content.size()),
    };
    file_ += "PK\x03\x04" + commonHeader(entry) + name + data;
    entries_.push_back(entry);
}

void ZipArchive::add(const std::string& name, const std::string& content) {
    add(name, std::span(reinterpret_cast<const std::uint8_t*>(content.data()), content.size()));
}

std::string ZipArchive::commonHeader(const Entry& entry) {
    const std::uint16_t none = 0;
    return littleEndian(version, none, deflated, none, firstDay, entry.checksum, entry.packedSize,
                        entry.size, static_cast<std::uint16_t>(entry.name.size()), none);
}

std::string ZipArchive::finish() {
    const std::uint16_t none = 0;
    const std::uint32_t noAttributes = 0;
    const auto directory = static_cast<std::uint32_t>(file_.size());
    for (const Entry& entry : entries_)
        file_ += "PK\x01\x02" + littleEndian(version) + commonHeader(entry) +
                 littleEndian(none, none, none, noAttributes, entry.offset) + entry.name;
    const auto count = static_cast<std::uint16_t>(entries_.size());
    file_ += "PK\x05\x06" + littleEndian(none, none, count, count,
                                         static_cast<std::uint32_t>(file_.size()) - directory,
                                         directory, none);
    return std::move(file_);
}

} // namespace bitlux
