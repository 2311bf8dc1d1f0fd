#include "waveform_bench.h"

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
    EXPECT_EQ(&bench.program.pins().port(), &bench.port); // nothing stands before it any more
    bench.record();
    EXPECT_EQ(bench.program.waveform().count(), 0U);
}

TEST(WordRecorder, ForgetsNoLevelInALongPauseFullOfPins) {
    WaveformBench bench;
    bench.configure("2");
    bench.program.dialog().extraPins.dataPins.enable(0).setValue(1);
    bench.program.dialog().extraPins.dataPins.assignment(0).setText("7");
    bench.click("frmConfigureSPI.cmdApply");
    bench.record();
    bench.session().DataPortPins.setLevel(5, 1);
    for (int i = 0; i < 3000; ++i)
        bench.program.pins().ToggleDataPort();
    bench.send("1");
    EXPECT_LE(bench.program.waveform().words().back().firstOfWord, 1000U);
    EXPECT_EQ(linesOf(bench.last()), "H 0L 8H, L 2H 4L 5H 7L, L 4H 7L, ? 2L 5H");
}

} // namespace
} // namespace bitlux::test
