#include "transfer/sent_words.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace bitlux {

namespace {

constexpr std::size_t wordsOfBlock = 1024;
constexpr std::size_t leastLast = 8; ///< words that outlast a restart

} // namespace

void SentWords::add(const Session& session, const Before& before) {
    const auto length = static_cast<std::size_t>(session.SPIWordLength);
    SentWord* const room = next(length, before.begin);
    if (room == nullptr)
        return;
    // All is read before it is written, so that neighbours go together.
    const SentWord::Levels levels{
        session.CSAssertLevel,  session.CSIdleLevel,   session.DIOneLevel,  session.DIZeroLevel,
        session.ClockHighLevel, session.ClockLowLevel, session.DOHighValue, session.DOLowValue};
    const SentWord::Pins pins{session.DIPin, session.CSPin, session.ClockPin, session.DOPin};
    SentWord& word = *room;
    word.levels = levels;
    word.pins = pins;
    word.begin = before.begin;
    word.onDongle = false;
    word.msbFirst = session.MSBFirst == ConstOn;
    word.length = session.SPIWordLength;
    word.type = session.SPIType;
    word.address = session.LPTPortAddress;
    word.dataBefore = before.data;
    word.controlBefore = session.ControlPortPins.value();
    word.bits = bits_;
    std::memcpy(bits_, session.WordToSend.data(), length * sizeof(std::int16_t));
    bits_ += length;
    std::memcpy(bits_, session.PortStatusSamples.data(), length * sizeof(std::int16_t));
    bits_ += length;
    word.end = clock_.nanoseconds();
}

void SentWords::add(const Session& session, std::int64_t begin, const UsbFrame& frame,
                    const UsbFrame& answer) {
    SentWord& word = *next(0, begin); // the frame has the bits
    word.begin = begin;
    word.onDongle = true;
    word.msbFirst = session.MSBFirst == ConstOn;
    word.frame = frame;
    word.answer = answer;
    word.end = clock_.nanoseconds();
}

/// The last block is full, or was made for shorter words.
bool SentWords::beginBlock(std::size_t length, std::int64_t begin) {
    if (length > SentWord::longest)
        return false;
    capacity_ = std::max(capacity_, length);
    Block block;
    if (blocks_.size() > 1 && count_ - blocks_[1].first >= most) {
        block = std::move(blocks_.front());
        blocks_.pop_front();
        dropBlocks(most);
    }
    block.first = count_;
    if (!block.words)
        block.words = std::make_unique_for_overwrite<SentWord[]>(wordsOfBlock);
    block.bits = std::make_unique_for_overwrite<std::int16_t[]>(wordsOfBlock * 2 * capacity_);
    blocks_.push_back(std::move(block));
    next_ = blocks_.back().words.get();
    end_ = next_ + wordsOfBlock;
    bits_ = blocks_.back().bits.get();
    if (count_ == from_)
        origin_ = begin;
    return true;
}

/// Those that are not needed for so many words.
void SentWords::dropBlocks(std::size_t kept) {
    while (blocks_.size() > 1 && count_ - blocks_[1].first >= kept)
        blocks_.pop_front();
}

void SentWords::restart() {
    from_ = count_;
    end_ = next_; // the next word begins a block
    dropBlocks(leastLast);
}

std::size_t SentWords::first() const {
    return blocks_.empty() ? count_ : std::max(from_, blocks_.front().first);
}

const SentWord& SentWords::word(std::size_t number) const {
    const auto after =
        std::upper_bound(blocks_.begin(), blocks_.end(), number,
                         [](std::size_t n, const Block& block) { return n < block.first; });
    const Block& block = *std::prev(after);
    return block.words[number - block.first];
}

std::vector<SentWord> SentWords::last(std::size_t count) const {
    const std::size_t there = blocks_.empty() ? 0 : count_ - blocks_.front().first;
    std::vector<SentWord> all;
    for (std::size_t n = count_ - std::min(count, there); n < count_; ++n)
        all.push_back(word(n));
    return all;
}

} // namespace bitlux
