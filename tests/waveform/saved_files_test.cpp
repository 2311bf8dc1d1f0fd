#include "waveform_bench.h"

#include "platform/failure.h"
#include "waveform/waveform_files.h"

#include <array>
#include <cstdio>
#include <sstream>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// What the independent decoder prints; it must end with success.
std::string sigrok(const std::string& arguments) {
    const std::string line = fmt::format("{} {} 2>&1", SIGROK_CLI, arguments);
    FILE* pipe = ::popen(line.c_str(), "r");
    std::string output;
    std::array<char, 4096> block{};
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), pipe))
        output.append(block.data(), size);
    ::pclose(pipe);
    return output;
}

/// The words of a program on both kinds of file.
struct SavedWords {
    TemporaryFolder folder;
    std::string vcd = folder.path("words.vcd");
    std::string sr = folder.path("words.sr");

    explicit SavedWords(WaveformBench& bench) {
        bench.program.saveVcd(vcd);
        bench.program.saveSr(sr);
    }

    [[nodiscard]] std::vector<std::string> inputs() const {
        return {"-I vcd:compress=100000 -i " + vcd, "-i " + sr};
    }
};

/// A transfer as the decoder prints it bit by bit, in the order of travel.
std::string transferOf(const std::vector<std::int16_t>& word, bool msbFirst) {
    std::string text = "spi-1:";
    for (std::size_t n = 0; n < word.size(); ++n)
        text += fmt::format(" {:02X}", word[msbFirst ? word.size() - 1 - n : n]);
    return text + "\n";
}

std::string decoder(int type, bool selectedWhenHigh) {
    constexpr std::array<const char*, 4> modes{"cpol=0:cpha=0", "cpol=0:cpha=1", "cpol=1:cpha=0",
                                               "cpol=1:cpha=1"};
    return fmt::format(" -P spi:clk=CLK:mosi=DI:miso=DO:cs=CS:{}:cs_polarity={}",
                       modes.at(static_cast<std::size_t>(type - 1)),
                       selectedWhenHigh ? "active-high" : "active-low");
}

/// Words of all lengths with this setting; what the decoder has to say about them.
std::string sendAllLengths(WaveformBench& bench, const std::vector<std::string>& options) {
    const bool msbFirst = bench.session().MSBFirst == ConstOn;
    std::string expected;
    for (const int length : {1, 7, 8, 16, 31, 40, 64, 160}) {
        bench.configure(std::to_string(length), options);
        const std::string digits = "935AC3F00FDEADBEEF0123456789ABCDEFFEDCBA98";
        bench.send(length == 1 ? "1" : digits.substr(0, static_cast<std::size_t>(length / 4)));
        expected += transferOf(bench.session().WordReceived, msbFirst);
        bench.session().WordToSend.resize(static_cast<std::size_t>(length)); // it may be longer
        expected += transferOf(bench.session().WordToSend, msbFirst);
    }
    return expected;
}

enum class Wire { Port, Adapter };

void checkSetting(int type, bool msbFirst, bool selectedWhenHigh, Wire wire = Wire::Port) {
    WaveformBench bench("scripted", {"1", "2D", "A5", "3C96", "5A5A1234", "F0F0A5C369",
                                     "0123456789ABCDEF", "C0FFEE00112233445566778899AABBCCDDEEFF"});
    if (wire == Wire::Adapter) {
        bench.port.setAddresses({});
        bench.bench.adapter.plug();
    }
    const std::vector<std::string> options{"optHex", msbFirst ? "optMSBfirst" : "optLSBfirst",
                                           selectedWhenHigh ? "optCSpositive" : "optCSnegative"};
    bench.configure("8", options);
    bench.setType(type);
    bench.record();
    const std::string expected = sendAllLengths(bench, options);
    EXPECT_EQ(bench.session().AdapterInUse.empty(), wire == Wire::Port);
    const SavedWords saved(bench);
    for (const std::string& input : saved.inputs())
        EXPECT_EQ(sigrok(input + decoder(type, selectedWhenHigh) +
                         ":wordsize=1 -A spi=mosi-transfer:miso-transfer"),
                  expected)
            << type << msbFirst << selectedWhenHigh << input;
    // The decoder does not look at the idle levels.
    const std::string levels =
        fmt::format("$dumpvars\n{}!\n{}\"\n0#\nx$\n", selectedWhenHigh ? 0 : 1, type <= 2 ? 0 : 1);
    EXPECT_NE(contentOf(saved.vcd).find(levels), std::string::npos) << type;
}

TEST(SavedFiles, AreReadBackByAnotherDecoder) {
    for (int type = 1; type <= 4; ++type)
        for (const bool msbFirst : {true, false})
            for (const bool selectedWhenHigh : {true, false})
                checkSetting(type, msbFirst, selectedWhenHigh);
}

TEST(SavedFiles, AreReadBackFromAnAdapter) {
    for (int type = 1; type <= 4; ++type)
        checkSetting(type, type % 2 == 0, type > 2, Wire::Adapter);
}

TEST(SavedFiles, ShowWordsThroughTheDongle) {
    for (const int type : {1, 2, 3, 4}) {
        WaveformBench bench("echo", {}, TestBench::WithDongle::Yes);
        bench.configure("16", {"optHex", "optLSBfirst", "SPIBaudRate(0)"});
        bench.setType(type);
        bench.record();
        for (const char* word : {"A5C3", "1234", "0001"})
            bench.send(word);
        const SavedWords saved(bench);
        for (const std::string& input : saved.inputs())
            EXPECT_EQ(sigrok(input + decoder(type, false) +
                             ":bitorder=lsb-first:wordsize=16 -A spi=mosi-data:miso-data"),
                      "spi-1: 00\nspi-1: A5C3\nspi-1: A5C3\nspi-1: 1234\nspi-1: 1234\nspi-1: 01\n")
                << type << input;
    }
}

TEST(SavedFiles, AreTheseBytes) {
    WaveformBench bench;
    bench.configure("1");
    bench.enablePin("Data", 0, "7", "CS");
    bench.click("frmConfigureSPI.cmdApply");
    bench.setType(7);
    bench.record();
    bench.send("1");
    bench.clock.idle(5'000'000'123);
    bench.get<forms::OptionButton>("frmMain.optSetHighNow(0)").click();
    bench.send("0");
    const SavedWords saved(bench);
    EXPECT_EQ(contentOf(saved.vcd),
              "$version Bitlux Forge $end\n$timescale 1ns $end\n$scope module spi $end\n"
              "$var wire 1 ! CS $end\n$var wire 1 \" CLK $end\n$var wire 1 # DI $end\n"
              "$var wire 1 $ DO $end\n$var wire 1 % CS_2 $end\n$upscope $end\n"
              "$enddefinitions $end\n#0\n$dumpvars\n1!\n1\"\n0#\nx$\n0%\n$end\n"
              "#1000\n0!\n#2000\n0\"\n0$\n#4000\n1\"\n1#\n#5000\n0\"\n#6000\n1!\n#7000\n1\"\n0#\n"
              "#5000008123\n1%\n#5000009123\n0!\n#5000010123\n0\"\n#5000012123\n1\"\n"
              "#5000013123\n0\"\n#5000014123\n1!\n#5000015123\n1\"\n#5000016123\n");
    // Five seconds in nanoseconds are too many samples for an exact file.
    const SampledWords sampled = bench.program.saveSr(saved.sr);
    EXPECT_EQ(sampled.words, 2U);
    EXPECT_EQ(sampled.tick, 100);
    EXPECT_FALSE(sampled.exact);
    EXPECT_NE(sigrok("-i " + saved.sr + " --show").find("Samplerate: 10000000"), std::string::npos)
        << sigrok("-i " + saved.sr + " --show");
    const SampledWords last =
        exportSr(bench.program.waveform().words(), saved.sr, std::size_t{100'000});
    EXPECT_EQ(last.words, 1U);
    EXPECT_TRUE(last.exact);
}

/// A word, then each of so many pins up and down once, every one under a name of its own.
std::vector<std::string> movePins(WaveformBench& bench, int count) {
    ConfigureDialog& dialog = bench.program.dialog();
    bench.configure("1");
    bench.enablePin("Data", 0, "7");
    bench.record();
    bench.send("0");
    std::vector<std::string> names;
    for (int n = 0; n < count; ++n) {
        names.push_back(fmt::format("PIN{}", n));
        dialog.extraPins.dataPins.name(0).setText(names.back());
        dialog.cmdApply_Click();
        for (const char* level : {"frmMain.optSetHighNow(0)", "frmMain.optSetLowNow(0)"})
            bench.get<forms::OptionButton>(level).click();
        bench.send("0");
    }
    return names;
}

/// How often a line changes, by the decoder's own count of edges.
std::size_t edgesOf(const std::string& input, const std::string& line) {
    std::istringstream output(sigrok(input + " -O bits:width=100000000 -C " + line));
    std::size_t edges = 0;
    for (std::string text; std::getline(output, text);)
        if (text.starts_with(line + ":")) {
            std::erase(text, ' ');
            const std::string samples = text.substr(text.find(':') + 1);
            for (std::size_t i = 1; i < samples.size(); ++i)
                edges += samples[i] != samples[i - 1] ? 1 : 0;
        }
    return edges;
}

TEST(SavedFiles, TakeAnyNumberOfLines) {
    WaveformBench bench;
    const std::vector<std::string> names = movePins(bench, 100);
    const SavedWords saved(bench);
    for (const std::string& input : {"-I vcd:downsample=1000 -i " + saved.vcd, "-i " + saved.sr})
        for (const char* line : {"PIN0", "PIN27", "PIN28", "PIN59", "PIN60", "PIN89", "PIN99"})
            EXPECT_EQ(edgesOf(input, line), 2U) << line << " " << input;
    const std::string vcd = contentOf(saved.vcd);
    for (const char* variable : {"$var wire 1 ! CS $end\n", "$var wire 1 ~ PIN89 $end\n",
                                 "$var wire 1 !! PIN90 $end\n", "$var wire 1 !\" PIN91 $end\n"})
        EXPECT_NE(vcd.find(variable), std::string::npos) << variable;
}

TEST(SavedFiles, NeedAWordAndAPlace) {
    WaveformBench bench;
    const TemporaryFolder folder;
    EXPECT_THROW(bench.program.saveVcd(folder.path("a.vcd")), Failure);
    bench.configure("8");
    bench.record();
    bench.send("A5");
    EXPECT_THROW(bench.program.saveSr("/missing/a.sr"), Failure);
    bench.fileDialogs.answer("/missing/a.vcd");
    bench.program.waveform().saveVcdAs();
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
}

} // namespace
} // namespace bitlux::test
