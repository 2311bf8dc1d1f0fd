#include "bench/dongle_fault.h"
#include "bench/dongle_word.h"
#include "platform/failure.h"

#include <tuple>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

std::string described(const DongleFault& fault) {
    constexpr const char* kinds[] = {"none",    "silent",   "late", "short",
                                     "stalled", "babbling", "gone"};
    return fmt::format("{} {} ms {} bytes @{} /{}", kinds[static_cast<std::size_t>(fault.kind)],
                       fault.duration / 1'000'000, fault.bytes, fault.frame, fault.chance);
}

TEST(DongleFault, IsReadFromItsText) {
    for (const auto& [text, fault] : {std::pair{"silent", "silent 0 ms 0 bytes @0 /1"},
                                      {"late:700@3", "late 700 ms 0 bytes @3 /1"},
                                      {"short:5/0.25", "short 0 ms 5 bytes @0 /0.25"},
                                      {"stalled@2/0.5", "stalled 0 ms 0 bytes @2 /0.5"},
                                      {"babbling@2", "babbling 0 ms 0 bytes @2 /1"},
                                      {"gone", "gone 0 ms 0 bytes @0 /1"},
                                      {"gone:2000@1", "gone 2000 ms 0 bytes @1 /1"}})
        EXPECT_EQ(described(dongleFaultFrom(text)), fault) << text;
    for (const char* text : {"",         "lost",      "silent:5",         "late",   "late:",
                             "late:x",   "late:-1",   "late:99999999999", "short",  "short:8",
                             "short:-1", "stalled@0", "stalled@",         "gone:0", "gone@1x",
                             "gone/2",   "gone/",     "gone/0.5@1",       "Gone",   "late:700 "})
        EXPECT_THROW(dongleFaultFrom(text), Failure) << text;
}

TEST(DongleFault, RepeatsWithTheSameSeed) {
    const auto strikes = [](std::uint32_t seed) {
        DongleFaults faults({dongleFaultFrom("silent@2"), dongleFaultFrom("stalled/0.5")}, seed);
        std::string result;
        for (int frame = 0; frame < 40; ++frame) {
            const DongleFault::Kind kind = faults.next().kind;
            result += kind == DongleFault::Kind::None     ? '.'
                      : kind == DongleFault::Kind::Silent ? 's'
                                                          : 'x';
        }
        return result;
    };
    EXPECT_EQ(strikes(7), strikes(7));
    EXPECT_NE(strikes(7), strikes(8));
    EXPECT_EQ(strikes(7).at(1), 's');
    EXPECT_NE(strikes(7).find('.'), std::string::npos);
    EXPECT_NE(strikes(7).find('x'), std::string::npos);
}

/// Notes what a chip would see: the edges with the level of data in, 'r' or 'f'.
class EdgeWatch : public Device {
public:
    void inputsChanged(const DeviceInputs& inputs, const BusShape&) override {
        if (inputs.clock != clock_)
            log += fmt::format("{}{}", inputs.clock ? 'r' : 'f', inputs.dataIn ? 1 : 0);
        if (inputs.chipSelect != select_)
            log += inputs.chipSelect ? '/' : '\\';
        clock_ = inputs.clock;
        select_ = inputs.chipSelect;
    }
    [[nodiscard]] bool dataOut() const override { return true; }
    void sampled() override { log += 's'; }

    std::string log;

private:
    bool clock_ = false;
    bool select_ = false;
};

TEST(DongleWord, ClocksEachTypeOnItsEdges) {
    using Case = std::tuple<bool, bool, bool, const char*>; // edges
    // Two bits, 1 then 0: sampled just before the edge on which data is valid.
    for (const auto& [validOnRising, toggledOnRising, idlesHigh, edges] :
         {Case{true, false, false, "/\\sr1f1sr0f0/"}, Case{false, true, false, "/\\r1sf1r0sf0/"},
          Case{false, true, true, "r0/\\sf1r1sf0r0/"}, Case{true, false, true, "r0/\\f1sr1f0sr0/"},
          Case{true, true, false, "/\\sr1f1sr0f0/"},
          Case{false, false, true, "r0/\\sf1r1sf0r0/"}}) {
        EdgeWatch watch;
        const BusShape shape{.validOnRising = validOnRising,
                             .toggledOnRising = toggledOnRising,
                             .clockIdlesHigh = idlesHigh,
                             .wordLength = 2};
        const UsbFrame answer = clockWord({2, 0x70, 0, 0x80}, shape, watch);
        EXPECT_EQ(watch.log, edges);
        EXPECT_EQ(answer, (UsbFrame{2, 0x70, 0, 0xC0}));
    }
}

} // namespace
} // namespace bitlux::test
