#pragma once

#include "registers/register_catalog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace bitlux {

/// What a word means to a chip.
struct DecodedWord {
    enum class Kind : std::uint8_t { Unknown, Write, Read, Command };

    Kind kind = Kind::Unknown;
    const RegisterItem* item = nullptr;      ///< of a write and a read
    const chips::Command* command = nullptr; ///< of a command
    std::uint64_t value = 0;                 ///< that a write sets

    /// "INIT write", "Mode Flags read", the title of a command; empty when it is unknown.
    [[nodiscard]] std::string title() const;
    /// The title, and the fields of a write.
    [[nodiscard]] std::string text() const;
};

/// Finds what the words of a chip mean. Takes about a microsecond a word.
class WordDecoder {
public:
    /// The catalog outlives it, and what it returns.
    explicit WordDecoder(const RegisterCatalog& catalog);

    /// A word that equals a command or a read is that; any other is a write, or a read with data.
    [[nodiscard]] DecodedWord decode(std::uint64_t word) const;
    /// The value in the answer to a read; nothing for any other word. Where the chip answers with
    /// the next word, this is the answer to that one.
    [[nodiscard]] std::optional<std::uint64_t> valueIn(const DecodedWord& request,
                                                       std::uint64_t answer) const;
    /// The captions of the status bits that are set in the answer to a word.
    [[nodiscard]] std::string statusIn(const DecodedWord& request, std::uint64_t answer) const;
    /// The fields in the answer to a read, and the status.
    [[nodiscard]] std::string answerText(const DecodedWord& request, std::uint64_t answer) const;
    /// The format of the chip's words.
    [[nodiscard]] const chips::WordFormat& format() const { return catalog_.chip().word; }
    /// The chip's words have as many bits.
    [[nodiscard]] bool fits(int bits) const { return format().bits == bits; }

private:
    [[nodiscard]] const RegisterItem* writtenBy(std::uint64_t address, std::uint64_t data) const;

    const RegisterCatalog& catalog_;
    std::unordered_map<std::uint64_t, DecodedWord> exact_;                ///< commands and reads
    std::unordered_multimap<std::uint64_t, const RegisterItem*> written_; ///< by address
    std::unordered_map<std::uint64_t, const RegisterItem*> read_;         ///< by address
};

} // namespace bitlux
