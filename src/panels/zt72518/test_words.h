#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// The factory test mode of the ZT72518 family: commands of one or two words of 16 bits, with
/// constant high bytes; the low bytes are the command.
namespace bitlux::zt72518 {

inline constexpr std::uint8_t testWordHigh = 66;
inline constexpr std::uint8_t secondTestWordHigh = 68;

/// Low byte of the first word.
enum class TestCommand : std::uint8_t {
    CanLinFlag = 16, ///< the second word has the number of the flag
    Trimming = 32,   ///< with the version; the second word has the other fields
    Thermal = 48,
    Threshold = 64, ///< the second word has the number of the threshold
    Scan = 80,
    PeripheralScan = 96,
    Iddq = 112,
    Pattern = 128, ///< the second word has the pattern
};

/// A flag of CAN and LIN that can be routed to a pin.
struct TestFlag {
    std::string_view title;
    std::string_view caption;
};

inline constexpr std::array<TestFlag, 13> testFlags{{
    {"Txpd", "TX permanent dominant timeout"},
    {"Rxpr", "RX permanent recessive flag"},
    {"can_uf", "CAN failure/recover under detection"},
    {"can_f", "CAN failure/recover fully detected"},
    {"H5", "CANH short to VDD comparator Threshold"},
    {"HB", "CANH short to Battery comparator Threshold"},
    {"HG", "CANH short to GND comparator Threshold"},
    {"L5", "CANL short to VDD comparator Threshold"},
    {"LB", "CANL short to Battery comparator Threshold"},
    {"LG", "CANL short to GND comparator Threshold"},
    {"CAN ILIM", "CANH/CANL current limit threshold"},
    {"HF LIN0", "LIN0 output signal on when detecting DPI"},
    {"HF LIN1", "LIN1 output signal on when detecting DPI"},
}};

/// A signal that a threshold routes to a pin; empty where there is none.
struct TestSignal {
    std::string_view name;
    std::string_view description;
};

/// Each threshold routes two signals.
using TestThreshold = std::array<TestSignal, 2>;

inline constexpr std::array<TestThreshold, 19> testThresholds{{
    {{{"Vdd5thr2", "Threshold 1  from VDD (5V - normal mode)"},
      {"Vdd5thr1", "Threshold 2  from VDD (5V - normal mode)"}}},
    {{{"Vddstop", "Threshold  from VDD (3.3V - normal mode)"},
      {"Vdd3p3thr", "Threshold from VDD (stop mode 3.3 and 5V)"}}},
    {{{"Vsup2_uv", "Vdd overcurrent detection (normal mode)"},
      {"Vdd_oc", "Vsup2 under voltage detection"}}},
    {{{"Vsup1_ov", "Vdd overcurrent detection (stop mode)"},
      {"Vdd_oc_stop", "Vsup1 over voltage detection"}}},
    {{{"Vrcan_oc", "Vddcan low threshold "}, {"Vrcan_low", "Vddcan overcurrent detection"}}},
    {{{"Vaux_oc", "Vaux regulator low threshold"},
      {"Vaux_low", "Vaux regulator overcurrent threshold"}}},
    {{{"Txl1", "Txl0 input threshold"}, {"Txl0", "Txl1 input threshold"}}},
    {{{"MOSI", "Txcan input threshold"}, {"Txc", "Mosi input threshold"}}},
    {{{"Csb", "Sclk input threshold"}, {"Sclk", "Csb  input threshold"}}},
    {{{"RXc sense", "RXcan sense output input threshold"}, {}}},
    {{{"Rxlin1 sense", "RXlin0 sense output input threshold"},
      {"Rxlin0 sense", "RXlin1 sense output input threshold"}}},
    {{{"Osc_tim", "OSC signal (5MHz)"}, {"Osc", "Timer oscillator signal (50us - 20KHz)"}}},
    {{{"Intb sense", "RST pin sense input threshold"},
      {"Rst sense", "Intb pin sense input threshold"}}},
    {{{"Resdet<1>", "Resdet 15K Ohms resistor comparator output"},
      {"Resdet<0>", "Resdet 33K Ohms resistor comparator output"}}},
    {{{"Dbg", "Resdet 68K Ohms resistor comparator output"},
      {"Resdet<2>", "Dbg pin input threshold (~9V)"}}},
    {{{"IO1", "High voltage IO0 input threshold"}, {"IO0", "High voltage IO1 input threshold"}}},
    {{{"IOLINT1", "High voltage LINT1 input threshold"},
      {"IOLINT0", "High voltage LINT0 input threshold"}}},
    {{{"VBUV", "Vbatsense under voltage flag"}, {"VSUV", "Vsup under voltage flag"}}},
    {{{"BIAS_STP", ""}, {}}},
}};

/// The trimming values, as numbers of the fields of the two words.
struct Trimming {
    int version = 0; ///< of trimVersions
    bool is3V3 = false;
    int oscillator = 0; ///< of trimOscillators
    int bias = 0;
    bool lin0 = false;
    int fuse = 0; ///< of trimFuses
};

inline constexpr std::array<std::string_view, 4> trimVersions{"514", "511", "518 S", "518 D"};
inline constexpr std::array<std::string_view, 8> trimOscillators{"  -",  "+5%",  "+10%", "+15%",
                                                                 "-20%", "-15%", "-10%", "-5%"};
inline constexpr std::array<std::string_view, 4> trimBiases{"00", "01", "10", "11"};
inline constexpr std::array<std::string_view, 4> trimFuses{
    "No effect",
    "Write2prg : write on fuse registers to test the configuration, without burning the fuses",
    "Read : read the information programmed",
    "Write2fuse : write the final configuration on register and burn the fuses"};
inline constexpr int burnFuses = 3;

constexpr std::uint8_t firstTrimByte(const Trimming& trimming) {
    return static_cast<std::uint8_t>(static_cast<int>(TestCommand::Trimming) +
                                     2 * trimming.version + (trimming.is3V3 ? 1 : 0));
}

constexpr std::uint8_t secondTrimByte(const Trimming& trimming) {
    return static_cast<std::uint8_t>(32 * trimming.oscillator + 8 * trimming.bias +
                                     (trimming.lin0 ? 4 : 0) + trimming.fuse);
}

} // namespace bitlux::zt72518
