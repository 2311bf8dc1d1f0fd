#include "waveform_bench.h"

#include "waveform/wave_row.h"
#include "waveform/waveform_files.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(WordRecorder, KeepsTheLastWordsWithinItsLimit) {
    constexpr std::size_t limit = 100'000;
    WaveformBench bench;
    bench.configure("160");
    bench.record(limit);
    for (int i = 0; i < 100; ++i) {
        bench.edit("frmMain.txtHexWordToSend", fmt::format("{:X}", i));
        bench.program.mainForm().singleWord.DoSPISingle();
    }
    const WaveformRecording& recording = bench.program.waveform();
    std::size_t bytes = 0;
    for (const WordRecord& word : recording.words())
        bytes += sizeof word + word.accesses.capacity() * sizeof(WireAccess);
    EXPECT_LE(bytes, limit);
    EXPECT_GE(recording.words().size(), 5U);
    EXPECT_EQ(recording.count(), 100U);
    EXPECT_EQ(recording.words().back().number, 100U);
    EXPECT_EQ(recording.words().front().number, 101 - recording.words().size());
    EXPECT_EQ(waveformOf(recording.words().front()).sent,
              fmt::format("{:040X}", 100 - recording.words().size()));
    EXPECT_EQ(recording.word(recording.words().front().number - 1), nullptr);
    EXPECT_EQ(waveformOf(*recording.word(99)).sent, fmt::format("{:040X}", 98));
}

TEST(WordRecorder, RecordsFromStartToStopBesideATrace) {
    WaveformBench bench;
    bench.configure("8");
    WireTrace trace;
    bench.program.startRecording(trace);
    bench.send("1");
    bench.record();
    bench.send("2");
    bench.program.stopRecording();
    const std::size_t traced = trace.accesses().size();
    bench.send("3");
    bench.program.waveform().stop();
    bench.send("4");
    EXPECT_EQ(trace.accesses().size(), traced);
    ASSERT_EQ(bench.program.waveform().count(), 2U);
    EXPECT_EQ(bench.last().sent, "03");
    EXPECT_EQ(&bench.program.pins().port(), &bench.port); // nothing is in front of it any more
    bench.record();
    EXPECT_EQ(bench.program.waveform().count(), 0U);
}

TEST(WordRecorder, ForgetsNoLevelInALongPauseFullOfPins) {
    WaveformBench bench;
    bench.configure("2");
    bench.enablePin("Data", 0, "7");
    bench.click("frmConfigureSPI.cmdApply");
    bench.record();
    bench.session().DataPortPins.setLevel(5, 1);
    for (int i = 0; i < 3000; ++i)
        bench.program.pins().ToggleDataPort();
    bench.send("1");
    EXPECT_LE(bench.program.waveform().words().back().firstOfWord, 1000U);
    EXPECT_EQ(linesOf(bench.last()), "H 0L 8H, L 2H 4L 5H 7L, L 4H 7L, ? 2L 5H");
}

/// All that a picture of a word says.
std::string pictureOf(const Waveform& word) {
    return fmt::format("{} type {} of {}, {}-{}, {} {}: {}; {}; {} {}", word.number, word.type,
                       word.length, word.origin, word.origin + word.end, word.msbFirst,
                       word.selectedWhenHigh, linesOf(word), bitsOf(word), word.sent,
                       word.received);
}

std::vector<std::string> picturesOf(const WaveformRecording& recording, std::size_t last) {
    std::vector<std::string> all;
    for (const WordRecord& word : recording.words())
        all.push_back(pictureOf(waveformOf(word)));
    all.erase(all.begin(), all.end() - static_cast<std::ptrdiff_t>(last));
    return all;
}

TEST(WordRecorder, BeginsWithTheLastWordsBeforeIt) {
    using enum TestBench::WithDongle;
    for (const auto& [name, dongle, lsbFirst, inverted] :
         Rows<const char*, TestBench::WithDongle, bool, bool>{{"port", No, false, false},
                                                              {"LSB first", No, true, false},
                                                              {"other polarities", No, false, true},
                                                              {"dongle", Yes, true, true}}) {
        SCOPED_TRACE(name);
        WaveformBench bench("echo", {}, dongle);
        bench.configure("8");
        ConfigureDialog& dialog = bench.program.dialog();
        (lsbFirst ? dialog.optLSBfirst : dialog.optMSBfirst).setValue(true);
        (inverted ? dialog.optCSpositive : dialog.optCSnegative).setValue(true);
        (inverted ? dialog.optDIpolarity_neg : dialog.optDIpolarity_pos).setValue(true);
        bench.program.waveform().keepLast();
        bench.send("77");
        bench.record();
        EXPECT_EQ(bench.program.waveform().count(), 1U);
        for (int type = 1; type <= 8; ++type) {
            bench.session().SPIType = static_cast<std::int16_t>(type); // moves no line by itself
            bench.send(fmt::format("{:X}", 0x35 + type));
        }
        const std::vector<std::string> recorded = picturesOf(bench.program.waveform(), 8);
        bench.program.waveform().stop();
        bench.record();
        // The words are the same to the nanosecond, since here each access takes as long; they
        // count from 1 again, and only eight are kept.
        std::vector<std::string> rebuilt = picturesOf(bench.program.waveform(), 8);
        ASSERT_EQ(bench.program.waveform().count(), 8U);
        for (std::size_t n = 0; n < recorded.size(); ++n)
            EXPECT_EQ(rebuilt[n], std::to_string(n + 1) + recorded[n].substr(1));
        EXPECT_EQ(bench.last().rebuilt, dongle == No);
        bench.send("5A");
        EXPECT_EQ(bench.last().number, 9U);
        EXPECT_FALSE(bench.last().rebuilt);
    }
}

TEST(WaveRow, PutsWordsOneAfterTheOther) {
    WaveformBench bench;
    bench.configure("1");
    bench.record();
    bench.send("1");
    bench.clock.spend(5'000'000);
    bench.send("0");
    std::vector<Waveform> words;
    for (const WordRecord& word : bench.program.waveform().words())
        words.push_back(waveformOf(word));
    const std::int64_t later = words[1].origin - words[0].origin;
    const WaveRow row(words);
    // A word takes 5 us here, an idle stretch an eighth of it.
    EXPECT_EQ(row.gap, 625);
    ASSERT_EQ(row.words.size(), 2U);
    EXPECT_EQ(row.words[1].at, 5625);
    EXPECT_EQ(row.words[1].begin, later);
    EXPECT_EQ(row.end(), 10625);
    std::vector<std::string> lines;
    for (const WaveLine& line : row.lines)
        lines.push_back(textOf(line));
    EXPECT_EQ(lines,
              (std::vector<std::string>{"H 0L 5H 5625nsL 10625nsH", "L 2H 4L 7625nsH 9625nsL",
                                        "L 1H 4L", "? 2H 5? 7625nsL"}));
    const std::int64_t idle = later - 5000;
    for (const auto& [at, time, word] :
         Rows<std::int64_t, std::int64_t, std::size_t>{{-100, -100, 0},
                                                       {5000, 5000, 0},
                                                       {5312, 5000 + idle * 312 / 625, 0},
                                                       {5625, later, 1},
                                                       {9625, later + 4000, 1},
                                                       {11000, later + 5375, 1}}) {
        EXPECT_EQ(row.timeAt(at), time) << at;
        EXPECT_EQ(row.wordAt(at), word) << at;
    }
    EXPECT_EQ(row.idleBefore(1), idle);
}

} // namespace
} // namespace bitlux::test
