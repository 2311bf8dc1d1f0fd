#include "transfer/sent_words.h"

#include "bench/bench_clock.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Words are numbers here, and are sent a microsecond after each other.
struct Store {
    VirtualClock clock;
    Session session;
    SentWords words{clock};

    void add(int number, int bits) {
        clock.spend(1000);
        session.SPIWordLength = static_cast<std::int16_t>(bits);
        session.WordToSend.assign(static_cast<std::size_t>(bits), 0);
        for (int bit = 0; bit < std::min(bits, 31); ++bit)
            session.WordToSend[static_cast<std::size_t>(bit)] =
                static_cast<std::int16_t>(number >> bit & 1);
        session.PortStatusSamples.assign(static_cast<std::size_t>(bits), 7);
        words.add(session, words.before(session));
    }
    int numberOf(std::size_t word) {
        int number = 0;
        for (std::size_t bit = words.word(word).sent().size(); bit-- > 0;)
            number = 2 * number + words.word(word).sent()[bit];
        return number;
    }
};

TEST(SentWords, KeepsTheLastOfThemWhateverTheirLength) {
    Store store;
    constexpr int count = 50'000;
    for (int n = 0; n < count; ++n) {
        store.add(n, n % 3 == 0 && n > count / 2 ? 24 : 16);
        if (n == count / 2)
            store.words.add(store.session, 5, {1, 2, 3}, {4});
    }
    store.add(1, SentWord::longest + 1); // is skipped
    ASSERT_EQ(store.words.end(), count + 1U);
    EXPECT_LE(store.words.first(), count + 1U - SentWords::most);
    EXPECT_GE(store.words.first(), count - SentWords::most - 2048);
    for (std::size_t word = store.words.first(); word < store.words.end(); ++word) {
        if (store.words.word(word).onDongle) {
            EXPECT_EQ(word, count / 2 + 1U);
            EXPECT_EQ(store.words.word(word).frame[2], 3);
            continue;
        }
        const int number = static_cast<int>(word) - (word > count / 2 ? 1 : 0);
        const bool isLong = store.words.word(word).sent().size() == 24;
        ASSERT_EQ(store.numberOf(word), isLong ? number : number & 0xFFFF);
        ASSERT_EQ(store.words.word(word).samples().back(), 7);
    }
    EXPECT_EQ(store.words.last(3).front().begin, (count - 2) * 1000);
}

TEST(SentWords, RestartsTheList) {
    Store store;
    for (int n = 0; n < 10; ++n)
        store.add(n, 8);
    EXPECT_EQ(store.words.first(), 0U);
    EXPECT_EQ(store.words.origin(), 1000);
    store.words.restart();
    EXPECT_EQ(store.words.first(), store.words.end());
    store.add(77, 8);
    store.add(78, 8);
    EXPECT_EQ(store.words.first(), 10U);
    EXPECT_EQ(store.words.origin(), 11'000);
    EXPECT_EQ(store.numberOf(store.words.first()), 77);
    ASSERT_EQ(store.words.last(8).size(), 8U); // those before are there for a waveform
    EXPECT_EQ(store.words.last(8).front().begin, 5000);
}

} // namespace
} // namespace bitlux::test
