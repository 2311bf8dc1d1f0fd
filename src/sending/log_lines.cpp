#include "sending/log_lines.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

/// False when an element is no bit.
template <std::size_t Size>
bool pack(WordBits bits, std::bitset<Size>& packed) {
    for (std::size_t i = 0; i < bits.size(); ++i) {
        if ((bits[i] & ~1) != 0)
            return false;
        packed[i] = bits[i] != 0;
    }
    return true;
}

template <std::size_t Size>
std::vector<std::int16_t> unpack(const std::bitset<Size>& packed, std::size_t length) {
    std::vector<std::int16_t> bits(length);
    for (std::size_t i = 0; i < length; ++i)
        bits[i] = packed[i] ? 1 : 0;
    return bits;
}

} // namespace

void LogLines::addWord(WordBits sent, WordBits received, WordDisplay display) {
    RawWord word{.sent = {}, .received = {}, .length = 0, .display = display};
    if (sent.size() <= rawBits && pack(sent, word.sent) && pack(received, word.received)) {
        word.length = static_cast<std::uint8_t>(sent.size());
        add(word, {}, linesOfWord);
    } else {
        add({}, textOf(sent, received, display), linesOfWord);
    }
}

void LogLines::addText(std::string line) {
    add({}, {std::move(line)}, 1);
}

void LogLines::clear() {
    entries_.clear();
    begin_ = end_ = 0;
}

void LogLines::keepLast(std::size_t lines) {
    while (size() > lines) {
        entries_.pop_front();
        begin_ = entries_.empty() ? end_ : entries_.front().firstLine;
    }
}

std::string LogLines::line(std::size_t index) const {
    const Entry& entry = entryAt(begin_ + index);
    const std::size_t within = begin_ + index - entry.firstLine;
    return entry.text.empty() ? textOf(entry.word)[within] : entry.text[within];
}

std::vector<std::int16_t> LogLines::sentAt(std::size_t index) const {
    if (index >= size())
        return {};
    const Entry& entry = entryAt(begin_ + index);
    return entry.text.empty() ? unpack(entry.word.sent, entry.word.length)
                              : std::vector<std::int16_t>{};
}

const LogLines::Entry& LogLines::entryAt(std::size_t number) const {
    const auto after = std::upper_bound(
        entries_.begin(), entries_.end(), number,
        [](std::size_t wanted, const Entry& entry) { return wanted < entry.firstLine; });
    return *std::prev(after);
}

std::vector<std::string> LogLines::textOf(WordBits sent, WordBits received, WordDisplay display) {
    std::string sentText;
    std::string receivedText;
    if (display == WordDisplay::Binary) {
        sentText = binaryTextSent(sent);
        receivedText = binaryTextReceived(received);
    } else if (display == WordDisplay::Hex) {
        sentText = hexText(sent);
        receivedText = hexText(received);
    }
    return {"SPI Word Sent:", "  " + sentText, "SPI Word Received:", "  " + receivedText, " "};
}

std::vector<std::string> LogLines::textOf(const RawWord& word) {
    return textOf(unpack(word.sent, word.length), unpack(word.received, word.length), word.display);
}

void LogLines::add(const RawWord& word, std::vector<std::string> text, std::size_t lines) {
    entries_.push_back({.firstLine = end_, .word = word, .text = std::move(text)});
    end_ += lines;
}

} // namespace bitlux
