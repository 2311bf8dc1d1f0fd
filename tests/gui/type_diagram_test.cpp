#include "gui/configure/type_diagram.h"
#include "gui/desktop/theme.h"
#include "support/rows.h"

#include <map>

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using gui::TypeTiming;

char digit(int bit) {
    return bit == TypeTiming::noBit ? 'x' : static_cast<char>('0' + bit);
}

/// A line of text for each line of the bus, a character for each half of a bit. `edges` has what
/// the edge at the beginning of each half means: v(alid), t(oggled), b(oth), or - for none.
struct Lines {
    explicit Lines(const TypeTiming& timing) {
        const bool idleHigh = timing.clock.front().edge == Edge::Falling;
        clock.assign(TypeTiming::end, idleHigh ? '1' : '0');
        for (const auto& [at, edge, valid, toggled] : timing.clock) {
            for (int half = at; half < TypeTiming::end; ++half)
                spot(clock, half) = edge == Edge::Rising ? '1' : '0';
            spot(edges, at) = "-vtb"[(valid ? 1 : 0) + (toggled ? 2 : 0)];
        }
        for (int half = timing.selected; half < timing.deselected; ++half)
            spot(select, half) = '0';
        fill(dataIn, timing.dataIn);
        fill(dataOut, timing.dataOut);
        for (const auto& read : timing.reads)
            spot(reads, static_cast<int>(read.at)) = digit(read.bit);
    }

    std::string select = std::string(TypeTiming::end, '1');
    std::string clock;
    std::string edges = std::string(TypeTiming::end, ' ');
    std::string dataIn = std::string(TypeTiming::end, ' ');
    std::string dataOut = std::string(TypeTiming::end, ' ');
    std::string reads = std::string(TypeTiming::end, ' ');

    static char& spot(std::string& line, int half) {
        return line.at(static_cast<std::size_t>(half));
    }
    static void fill(std::string& line, const std::vector<TypeTiming::Window>& windows) {
        for (const auto& window : windows)
            for (int half = window.from; half < window.to; ++half)
                spot(line, half) = digit(window.bit);
    }
};

TEST(TypeTiming, FollowsTheWritesOfEachType) {
    using Text = const char*;
    const Rows<int, bool, Text, Text, Text, Text, Text, Text> cases{
        {1, true, "110000000000111", "000010101010000", "    vtvtvtvt   ", "   33221100    ",
         "  333221100x   ", "    3 2 1 0    "},
        {2, true, "110000000001111", "000101010100000", "   tvtvtvtv    ", "   33221100    ",
         "  x33221100    ", "    3 2 1 0    "},
        {3, true, "110000000000111", "111101010101111", "    vtvtvtvt   ", "   33221100    ",
         "  333221100x   ", "    3 2 1 0    "},
        {4, true, "110000000001111", "111010101011111", "   tvtvtvtv    ", "   33221100    ",
         "  x33221100    ", "    3 2 1 0    "},
        {5, true, "110000000001111", "000100101010000", "   -b -b-b--   ", "    3221100    ",
         "  332221100    ", "   32 1 0      "},
        {5, false, "110000000001111", "000101010100000", "   -b-b-b-b    ", "    0011223    ",
         "  00112233x    ", "   0 1 2 3     "},
        {6, true, "110000000001111", "000101010100000", "   b-b-b-b-    ", "   33221100    ",
         "  3221100xx    ", "  3 2 1 0      "},
        {7, true, "110000000000111", "111010101010011", "   -b-b-b-b- - ", "    332211000  ",
         "  33221100xx   ", "   3 2 1 0     "},
        {8, true, "110000000001111", "111010101011111", "   b-b-b-b-    ", "   33221100    ",
         "  3221100xx    ", "  3 2 1 0      "},
    };
    for (const auto& [type, msbFirst, select, clock, edges, dataIn, dataOut, reads] : cases) {
        const Lines lines(gui::typeTiming(clockingType(type), msbFirst));
        SCOPED_TRACE(testing::Message() << "type " << type << ", MSB first " << msbFirst);
        EXPECT_EQ(lines.select, select);
        EXPECT_EQ(lines.clock, clock);
        EXPECT_EQ(lines.edges, edges);
        EXPECT_EQ(lines.dataIn, dataIn);
        EXPECT_EQ(lines.dataOut, dataOut);
        EXPECT_EQ(lines.reads, reads);
    }
}

QImage pictureOf(QWidget& widget, qreal scale) {
    QImage image(widget.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    widget.render(&image);
    return image;
}

TEST(TypeDiagram, FollowsTypeAndPalette) {
    gui::TypeDiagram diagram(1);
    diagram.resize(diagram.sizeHint());
    diagram.setType(6, {.msbFirst = false});
    gui::applyTheme(true);
    diagram.setPalette(QApplication::palette());
    gui::TypeDiagram other(6);
    other.resize(diagram.size());
    EXPECT_NE(pictureOf(diagram, 1), pictureOf(other, 1)); // the order of the bits
    other.setType(6, {.msbFirst = false});
    EXPECT_EQ(pictureOf(diagram, 1), pictureOf(other, 1));
    EXPECT_EQ(diagram.minimumSizeHint(), gui::TypeDiagram(1).minimumSizeHint());
    diagram.setType(6, {.msbFirst = false, .selectedWhenHigh = true});
    EXPECT_NE(pictureOf(diagram, 1), pictureOf(other, 1));
    gui::applyTheme(false);
}

TEST(TypeDiagram, LinesFillWholePixels) {
    for (const auto& [scale, thickness] : {std::pair{1.0, 1}, {1.5, 2}, {2.0, 3}}) {
        QWidget around;
        around.resize(560, 220);
        gui::TypeDiagram diagram(1, &around);
        diagram.setGeometry(7, 11, 523, 193); // half a pixel off at 150 %
        const QImage picture = pictureOf(around, scale);
        const int x = static_cast<int>((7 + 523 - 6) * scale); // where all lines are idle
        std::map<QRgb, int> colors;
        for (int y = 0; y < picture.height(); ++y)
            ++colors[picture.pixel(x, y)];
        EXPECT_EQ(colors.size(), 2U) << "scale " << scale;
        EXPECT_EQ(colors[diagram.palette().color(QPalette::WindowText).rgb()], 4 * thickness)
            << "scale " << scale;
    }
}

TEST(TypeDiagram, DescribesTheTimingInWords) {
    for (const auto& [type, look, words] : Rows<int, gui::WordLook, const char*>{
             {3,
              {},
              "Timing of SPI type 3: data is valid on the falling edge of CLK, toggled on the "
              "rising edge, CLK idles high; SPI mode 2, MSB first; CS is low within the word"},
             {6,
              {.msbFirst = false, .selectedWhenHigh = true},
              "Timing of SPI type 6: data is valid and toggled on the rising edge of CLK, DO is "
              "read just before it, CLK idles low; LSB first; CS is high within the word"},
             {5,
              {},
              "Timing of SPI type 5: data is valid and toggled on the falling edge of CLK, DO is "
              "read just before it, CLK idles low; MSB first, CLK stays low after bit 3; CS is "
              "low within the word"}}) {
        gui::TypeDiagram diagram(type);
        diagram.setType(type, look);
        EXPECT_EQ(diagram.accessibleDescription().toStdString(), words);
    }
}

TEST(ClockingType, HasTheModeOfItsEdgesAndIdleLevel) {
    constexpr std::optional<int> none;
    constexpr std::array<std::optional<int>, 8> modes{0, 1, 2, 3, none, none, none, none};
    for (int type = 1; type <= 8; ++type)
        EXPECT_EQ(spiMode(clockingType(type)), modes.at(static_cast<std::size_t>(type - 1)))
            << "type " << type;
}

} // namespace
} // namespace bitlux::test
