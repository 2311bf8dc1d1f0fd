#include "panels/panel_bench.h"

#include <array>
#include <map>
#include <set>
#include <tuple>

namespace bitlux::test {
namespace {

constexpr forms::Color plain = 0xFFFFC0;
constexpr forms::Color striped = 0xFFC0C0;
using Bits = std::vector<int>;
using Names = std::set<std::string>;
using Texts = std::vector<std::string>;

/// A panel with the chip behind the dongle, and what anybody has seen lit so far.
class ChipBench : public PanelBench {
public:
    explicit ChipBench(const std::string& device = "zt72518d") : PanelBench(device) {}

    /// Presses a button; the labels of a row that are lit then, in either colour.
    Bits after(const std::string& button, const std::string& row) {
        press(button);
        for (const forms::Control* control : panel().controls())
            if (control->kind() == forms::Control::Kind::Label &&
                (control->backColor() == plain || control->backColor() == striped))
                seen_.insert(control->localName());
        Bits all = lit(row, plain);
        const Bits others = lit(row, striped);
        all.insert(all.end(), others.begin(), others.end());
        return all;
    }
    /// Turns a switch of the chip and remembers that.
    void turnKnown(const std::string& name, bool on = true) {
        turned_.insert(switchNamed(*dongle.chip(), name));
        turn(name, on);
    }
    /// Switches that nobody has turned, as "Group/Name".
    Names switchesLeft() {
        Names left;
        for (std::size_t i = 0; i < dongle.chip()->switches().size(); ++i)
            if (const ChipSwitch& one = dongle.chip()->switches()[i]; !turned_.contains(i))
                left.insert(fmt::format("{}/{}", one.group, one.name));
        return left;
    }
    /// Labels of arrays that say something and were never lit.
    Names darkLabels(const Names& arrays) {
        Names dark;
        for (const forms::Control* control : panel().controls())
            if (const std::string name = control->localName();
                arrays.contains(control->name()) && control->index() < 16 && caption(name) != "-" &&
                !seen_.contains(name))
                dark.insert(name);
        return dark;
    }
    /// The mode as the label of the mode page names it.
    std::string mode() {
        press("Cm_Mode_Rm_Rh");
        std::string names;
        for (int label = 8; label <= 13; ++label)
            if (const auto& name = on<forms::Label>(fmt::format("Mode_Rm_Rh({})", label));
                name.visible())
                names += name.caption();
        return names;
    }

private:
    std::set<std::size_t> turned_;
    Names seen_;
};

/// A row of flags: the button that reads it, its first label, the name of its switches at the chip,
/// the status row while one of them is up, and the flags that also tell of a wake-up.
struct Flags {
    const char* button;
    const char* row;
    int first;
    const char* group;
    unsigned status;
    unsigned wakeUps;
    std::array<const char*, 8> captions;
};

constexpr Flags flagRows[] = {
    {"Cm_RFl(1)",
     "Regulator_RFl",
     0,
     "Reg Low",
     0x0101,
     0x00,
     {"IDD OC INT", "VSUV", "Vsense low", "5V CAN OC", "5V CAN low", "5V-CAN Tshutdown", "Vaux OC",
      "Vaux low (in NOR)"}},
    {"Cm_RFl(2)",
     "CAN_RFl",
     0,
     "CAN Low",
     0x1040,
     0x80,
     {"Over Current", "CAN Bus dom clamp", "Tx Dom", "Rx high", "Rx Low", "Over Temp", "-",
      "CAN WU"}},
    {"Cm_RFl(3)",
     "IO_RFl",
     0,
     "I/O Low",
     0x0404,
     0x00,
     {"WD flash 50%", "I/O_0 T Shutdown", "VSUP1_OV", "VSUP2_UV", "CSB low 2.5ms", "SPI ERR",
      "HS2 to GND", "HS3 to GND"}},
    {"Cm_RFl(4)",
     "Interrupts_RFl",
     0,
     "Safe INT",
     0x8200,
     0x00,
     {"-", "Vaux OV", "VDD OV", "VDD low INT", "VDD Tpre Warning", "SAFE_RES MisMatch",
      "RST2HIGH (VDDOFF)", "MCU REQ INT"}},
    {"Cm_RFl(5)",
     "Lin0_RFl",
     0,
     "Lin 1",
     0x0810,
     0x40,
     {"Bus Dom Clamp", "Tx Dom", "Rx High", "Rx Low", " Over Temp", "TERM to GND", "LIN 1 WU",
      "-"}},
    {"Cm_RFl(6)",
     "Lin1_RFl",
     0,
     "Lin 2",
     0x0820,
     0x40,
     {"Bus Dom Clamp", "Tx Dom", "Rx High", "Rx Low", " Over Temp", "TERM to GND", "LIN 2 WU",
      "-"}},
    {"Cm_RFh(1)",
     "Regulator_RFh",
     0,
     "Reg High",
     0x0102,
     0x01,
     {"IDD OC WU", "Vsuv Batfail", "RST2LOW (T<100ms)", "-", "VDD Tshutdown", "-", "-", "-"}},
    {"Cm_RFh(2)",
     "CAN_RFh",
     0,
     "CAN High",
     0x1080,
     0x00,
     {"CANH to gnd", "CANH to Vdd", "CANH to Vsup", "CANL to Gnd", "CANL to Vdd", "CANL to Vsup",
      "CAN-F", "CAN_UF"}},
    {"Cm_RFh(3)",
     "IO_RFh",
     0,
     "I/O High",
     0x0408,
     0xF0,
     {"PIN_Leave debug ", "SPI Goto RST", "SPI Goto SLP", "INT Serv_TO", "FWU", "SPI WU CSB_STP",
      "I/O_0_2 INT_WU", "I/O_1_3 INT_WU"}},
    {"Cm_RFh(4)",
     "Interrupts_RFl",
     8,
     "Safe RST",
     0x2200,
     0x00,
     {"SPI W/D refresh fail", "Multiple RST", "Rst Low 100ms", "VDD low RST", "VDD Low 100ms", "-",
      "-", "-"}},
};

/// Something that is no flag, and the one label that it changes.
struct Level {
    const char* name;
    const char* button;
    const char* row;
    int label;
    const char* caption;
    bool litWhen = true;
};

constexpr Level levels[] = {
    {"Pins/RST", "Cm_Mux_Rl", "Reg_W", 13, "RST"},
    {"Pins/INT", "Cm_Mux_Rl", "Reg_W", 15, "INT"},
    {"Pins/Debug", "Cm_RFh(0)", "Mode_Rm_RFh", 0, "DEBUG Staus"},
    {"Pins/Debug", "Cm_RFl(0)", "Mode_Rm_RFl", 0, "Debug Status"},
    {"Pins/SAFE", "Cm_RFh(0)", "Mode_Rm_RFh", 1, "SAFE Status", false},
    {"Pins/SAFE", "Cm_RFl(0)", "Mode_Rm_RFl", 1, "SAFE Status", false},
    {"Pins/I/O 0", "Cm_I0_Rh", "IO_Rh", 0, "I/O 0 State"},
    {"Pins/I/O 1", "Cm_I0_Rh", "IO_Rh", 2, "I/O 1 state"},
    {"Pins/I/O 2", "Cm_I0_Rh", "IO_Rh", 4, "I/O 2 state"},
    {"Pins/I/O 3", "Cm_I0_Rh", "IO_Rh", 6, "I/O 3 State"},
    {"Identity/Rev-0", "Cm_Interrupts_Rh", "interrupts_Rh", 0, "Rev-0"},
    {"Identity/Rev-1", "Cm_Interrupts_Rh", "interrupts_Rh", 1, "Rev-1"},
    {"Identity/Rev-2", "Cm_Interrupts_Rh", "interrupts_Rh", 2, "Rev-2"},
    {"Identity/Rev-3", "Cm_Interrupts_Rh", "interrupts_Rh", 3, "Rev-3"},
    {"Identity/Rev-4", "Cm_Interrupts_Rh", "interrupts_Rh", 4, "Rev-4"},
    {"Identity/Device ID0", "Cm_Interrupts_Rh", "interrupts_Rh", 5, "Device ID0"},
    {"Identity/Device ID1", "Cm_Interrupts_Rh", "interrupts_Rh", 6, "Device ID1"},
    {"Identity/VDD_ID", "Cm_Interrupts_Rh", "interrupts_Rh", 7, "VDD_ID"},
};

/// A register whose bits light its read row one by one.
struct Written {
    const char* row;
    const char* write;
    const char* read;
    const char* shown;
};

constexpr Written writtenRegisters[] = {
    {"Mux_W", "Cm_MUX_W", "Cm_Mux_Rl", "Mux_Rl"},
    {"RAM", "Cm_Write_RAM(0)", "Cm_Read_RAM(0)", "RAM_A"},
    {"RAM", "Cm_Write_RAM(1)", "Cm_Read_RAM(1)", "RAM_B"},
    {"RAM", "Cm_Write_RAM(2)", "Cm_Read_RAM(2)", "RAM_C"},
    {"RAM", "Cm_Write_RAM(3)", "Cm_Read_RAM(3)", "RAM_D"},
    {"INIT_Vreg_W", "Cm_Init_Vreg_W", "Cm_Init_Reg_Rl", "Init_Reg_Rl"},
    {"Init_Wdog_W", "Cm_Init_Wdog_W", "Cm_Init_Wdog_Rl", "Init_Wdog_Rl"},
    {"Init_Lin_W", "Cm_Init_Lin_Io_W", "Cm_Init_Lin_Io_Rl", "Init_Lin_Rl"},
    {"Init_Misc_W", "Cm_Init_Misc_W", "Cm_Init_Misc_Rl", "Init_Misc_Rl"},
    {"Timer0_W", "Cm_Timer0_W", "Cm_Timer0_Rl", "Timer0_Rl"},
    {"Timer1_W", "Cm_Timer1_W", "Cm_Timer1_Rl", "Timer1_Rl"},
    {"Timer2_W", "Cm_Timer2_W", "Cm_Timer2_Rl", "Timer2_Rl"},
    {"Regulator_W", "Cm_Regulator_W", "Cm_Regulateur_Rl", "Regulateur_Rl"},
    {"Can_W", "Cm_Can_W", "Cm_CAN_Rl", "CAN_Rl"},
    {"IO_W", "Cm_Io_W", "Cm_Io_Rl", "IO_Rl"},
    {"Interrupts_W", "Cm_Interrupts_W", "Cm_interrupts_Rl", "Interrupts_Rl"},
    {"Lin0_W", "Cm_Lin0_W", "Cm_Lin0_Rl", "Lin0_Rl"},
    {"Lin1_W", "Cm_Lin1_W", "Cm_Lin1_Rl", "Lin1_Rl"},
};

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void lightFlags(ChipBench& bench) {
    for (const Flags& flags : flagRows)
        for (int bit = 0; bit < 8; ++bit) {
            const std::string caption = flags.captions.at(static_cast<std::size_t>(bit));
            const int label = flags.first + bit;
            SCOPED_TRACE(fmt::format("{}/{}", flags.group, caption));
            EXPECT_EQ(bench.caption(fmt::format("{}({})", flags.row, label)), caption);
            if (caption == "-")
                continue;
            bench.turnKnown(fmt::format("{}/{}", flags.group, trimmed(caption)));
            const unsigned status = flags.status | ((flags.wakeUps >> bit & 1) != 0 ? 0x4000U : 0U);
            bench.after("Cm_ReadAll_Rl(1)", "Reg_W");
            EXPECT_EQ(bench.status(), fmt::format("{:04X}", status));
            EXPECT_EQ(bench.after(flags.button, flags.row), Bits{label});
            EXPECT_EQ(bench.status(), fmt::format("{:04X}", status));
            EXPECT_EQ(bench.after(flags.button, flags.row), Bits{});
            EXPECT_EQ(bench.status().substr(0, 2), "00");
        }
}

void lightLevels(ChipBench& bench) {
    for (const Level& level : levels) {
        SCOPED_TRACE(fmt::format("{} {}", level.name, level.button));
        EXPECT_EQ(bench.caption(fmt::format("{}({})", level.row, level.label)), level.caption);
        Bits others;
        for (const bool on : {true, false}) {
            bench.turnKnown(level.name, on);
            Bits lit = bench.after(level.button, level.row);
            const auto removed = std::erase(lit, level.label);
            EXPECT_EQ(removed, on == level.litWhen ? 1U : 0U);
            EXPECT_TRUE(on || lit == others) << "no other label changes";
            others = lit;
        }
    }
}

void lightRegisters(ChipBench& bench) {
    for (const Written& written : writtenRegisters)
        for (int bit = 0; bit < 8; ++bit) {
            SCOPED_TRACE(fmt::format("{} {}", written.row, bit));
            bench.pokeTo(written.row, 1 << bit);
            bench.press(written.write);
            const bool clearsItself = bit == 6 && written.shown == std::string("Interrupts_Rl");
            EXPECT_EQ(bench.after(written.read, written.shown), clearsItself ? Bits{} : Bits{bit});
        }
    // What the chip has of high views besides pins and identity.
    for (const auto& [mode, lit] :
         std::map<int, Bits>{{0x00, {}}, {0x40, {6}}, {0x80, {5}}, {0xC0, {6, 7}}}) {
        bench.pokeTo("Can_W", mode);
        bench.press("Cm_Can_W");
        EXPECT_EQ(bench.after("Cm_CAN_Rh", "CAN_Rh"), lit);
    }
    for (const auto& [row, write, read, shown] :
         {Written{"Lin0_W", "Cm_Lin0_W", "CM_Lin0_Rh", "Lin0_Rh"},
          Written{"Lin1_W", "Cm_Lin1_W", "Cm_Lin1_Rh", "Lin1_Rh"}}) {
        bench.pokeTo(row, 0xFF);
        bench.press(write);
        EXPECT_EQ(bench.after(read, shown), (Bits{6, 7}));
    }
}

/// Random words until each of their bits was seen, in every mode.
void lightRandomWords(ChipBench& bench) {
    for (const auto& [row, write, byte] : {std::tuple{"Init_Misc_W", "Cm_Init_Misc_W", 0x00},
                                           {"Timer0_W", "Cm_Timer0_W", 0x1F},
                                           {"Timer2_W", "Cm_Timer2_W", 0xFF}}) {
        bench.pokeTo(row, byte);
        bench.press(write);
    }
    for (int turn = 0; turn < 8; ++turn) {
        for (const char* choice : {"R_Spe_Mode(2)", "R_Spe_Mode(1)"}) {
            bench.choose(choice);
            bench.after("Cm_Spe_Mode_W(1)", "Spe_Mode_Rl");
        }
        bench.press("watchdog(12)");
        bench.after("Cm_Spe_Mode_Rl_b", "Spe_Mode_Rl");
        bench.after("Cm_Wd_Refresh_Rl", "Wd_Refresh_Rl");
        bench.pokeTo("Mode_Rm_W", 0xF8); // stop, with all that can wake
        for (const char* press :
             {"Cm_Mode_RM_W(0)", "Cm_Mode_Rm_Rl", "Cm_Mode_Rm_Rh", "Cm_RFl(0)", "Cm_RFh(0)",
              "Cm_Mode_RM_W(1)", "Cm_Mode_Rm_Rh", "Cm_RFl(0)", "Cm_RFh(0)", "Cm_RFh(3)"})
            bench.after(press, "Mode_Rm_Rh");
    }
}

TEST(ChipBehindPanel, LightsEveryLabel) {
    ChipBench bench;
    lightFlags(bench);
    lightLevels(bench);
    EXPECT_EQ(bench.switchesLeft(), (Names{"Faults/Flags stay", "Faults/No watchdog",
                                           "Faults/Output stuck high", "Faults/Silent"}));
    lightRegisters(bench);
    lightRandomWords(bench);
    EXPECT_EQ(bench.darkLabels({"Reg_W",          "Mux_Rl",        "RAM_A",         "RAM_B",
                                "RAM_C",          "RAM_D",         "Init_Reg_Rl",   "Init_Wdog_Rl",
                                "Init_Lin_Rl",    "Init_Misc_Rl",  "Spe_Mode_Rl",   "Spe_Mode_Rl_b",
                                "Timer0_Rl",      "Timer1_Rl",     "Timer2_Rl",     "Wd_Refresh_Rl",
                                "Mode_Rm_Rl",     "Mode_Rm_RFl",   "Mode_Rm_RFh",   "Regulateur_Rl",
                                "Regulator_RFl",  "Regulator_RFh", "CAN_Rl",        "CAN_Rh",
                                "CAN_RFl",        "CAN_RFh",       "IO_Rl",         "IO_Rh",
                                "IO_RFl",         "IO_RFh",        "Interrupts_Rl", "interrupts_Rh",
                                "Interrupts_RFl", "Lin0_Rl",       "Lin0_Rh",       "Lin0_RFl",
                                "Lin1_Rl",        "Lin1_Rh",       "Lin1_RFl"}),
              Names{"Interrupts_Rl(6)"})
        << "the request for an interrupt clears itself";
}

TEST(ChipBehindPanel, ShowsItsFaults) {
    ChipBench bench;
    bench.turn("VSUV");
    bench.turn("Flags stay");
    EXPECT_EQ(bench.after("Cm_RFl(1)", "Regulator_RFl"), Bits{1});
    EXPECT_EQ(bench.after("Cm_RFl(1)", "Regulator_RFl"), Bits{1});
    bench.turn("Flags stay", false);
    EXPECT_EQ(bench.after("Cm_RFl(1)", "Regulator_RFl"), Bits{1});
    EXPECT_EQ(bench.after("Cm_RFl(1)", "Regulator_RFl"), Bits{});
    bench.turn("Silent");
    EXPECT_EQ(bench.after("Cm_Interrupts_Rh", "interrupts_Rh"), Bits{});
    EXPECT_EQ(bench.caption("Mode_Rm_Rh(14)"), "Make sure set up is correct");
    bench.turn("Silent", false);
    bench.turn("Output stuck high");
    EXPECT_EQ(bench.after("Cm_Interrupts_Rh", "interrupts_Rh"), (Bits{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(bench.caption("Mode_Rm_Rh(14)"), "5V - ZT72518D - v4.6");
    bench.press("Cm_ReadAll_Rl(1)");
    EXPECT_EQ(bench.status(), "FFFF");
    bench.turn("Output stuck high", false);
    bench.turn("No watchdog");
    bench.press("watchdog(12)");
    bench.clock.idle(60'000 * millisecond);
    EXPECT_EQ(bench.mode(), "Normal Mode");
}

TEST(ChipBehindPanel, IsResetWhenItsWatchdogIsStopped) {
    const auto start = [](ChipBench& bench, int chipMode, int dongleMode) {
        bench.choose(fmt::format("R_Init_Wd({})", chipMode + 1));
        bench.press("Cm_Init_Wdog_W");
        bench.on<forms::ComboBox>("wd_config(0)").select(dongleMode);
        bench.on<forms::ComboBox>("wd_config(1)").select(6); // 100 ms
        EXPECT_EQ(bench.mode(), "Init Mode");
        bench.press("watchdog(0)");
        bench.clock.idle(10 * millisecond);
    };
    for (int mode = 0; mode < 4; ++mode) {
        SCOPED_TRACE(mode);
        ChipBench bench;
        start(bench, mode, mode);
        for (int minute = 0; minute < 3; ++minute) {
            EXPECT_EQ(bench.mode(), "Normal Mode");
            bench.clock.idle(60'000 * millisecond);
        }
        EXPECT_EQ(bench.after("Cm_RFh(4)", "Interrupts_RFl"), Bits{});
        EXPECT_EQ(bench.caption("wd_aff(1)"), "Watch Dog is ON");
        bench.press("watchdog(2)");
        EXPECT_EQ(bench.caption("wd_aff(1)"), "Watch Dog is OFF");
        bench.clock.idle(150 * millisecond); // of 256, the last refresh was up to 100 ms ago
        EXPECT_EQ(bench.mode(), "Normal Mode");
        bench.clock.idle(105 * millisecond);
        EXPECT_EQ(bench.mode(), "Normal Request Mode");
        EXPECT_EQ(bench.after("Cm_RFh(4)", "Interrupts_RFl"), Bits{8}) << "SPI W/D refresh fail";
        EXPECT_EQ(bench.status(), "2200");
        EXPECT_EQ(bench.after("Cm_RFh(4)", "Interrupts_RFl"), Bits{});
        bench.press("watchdog(0)");
        bench.clock.idle(1000 * millisecond);
        EXPECT_EQ(bench.mode(), "Normal Mode") << "is served again";
    }
    for (int mode = 1; mode < 4; ++mode) { // the dongle answers otherwise than the chip wants
        ChipBench bench;
        start(bench, mode, mode % 3 + 1);
        bench.clock.idle(1000 * millisecond);
        Bits lit = bench.after("Cm_RFh(4)", "Interrupts_RFl");
        EXPECT_EQ(std::erase(lit, 8), 1U) << mode;
    }
}

TEST(ChipBehindPanel, WakesFromLowPowerAndTellsWhy) {
    struct WakeUp {
        int mode;           ///< s_mode: 0 sleep, 1 stop
        int box;            ///< opt_s_mode, -1 for none
        std::int64_t sleep; ///< milliseconds in which nothing happens
        const char* act;    ///< a button, or "!" and a switch of the chip
        std::int64_t awake; ///< milliseconds until it is in Normal Request
        const char* read;
        const char* row;
        Bits lit;
    };
    for (const WakeUp& c :
         {WakeUp{1, 0, 44, "", 6, "Cm_RFh(3)", "IO_RFh", {4}},
          WakeUp{0, 0, 44, "", 6, "Cm_RFh(3)", "IO_RFh", {2, 4}},
          WakeUp{1, 3, 20, "", 6, "Cm_RFh(4)", "Interrupts_RFl", {8}},
          WakeUp{1, -1, 5000, "Cm_Mode_RM_W(1)", 5, "Cm_RFh(3)", "IO_RFh", {5}},
          WakeUp{1, -1, 5000, "watchdog(4)", 60, "Cm_RFh(1)", "Regulator_RFh", {0}},
          WakeUp{1, -1, 5000, "!I/O_0_2 INT_WU", 5, "Cm_RFh(3)", "IO_RFh", {6}},
          WakeUp{0, -1, 5000, "!CAN WU", 5, "Cm_RFl(2)", "CAN_RFl", {7}}}) {
        SCOPED_TRACE(fmt::format("{} {} {}", c.mode, c.box, c.act));
        ChipBench bench;
        bench.choose("R_Init_Wd(9)"); // any current wakes it
        bench.on<forms::ComboBox>("Combo_Wd_Stp").edit("24 ms / 96 ms");
        bench.on<forms::ComboBox>("Combo_Fwu").edit("48 ms");
        bench.tick("Ch_Reg(0)"); // allows sleep
        bench.on<forms::ComboBox>("wd_config(2)").select(0);
        bench.choose(fmt::format("s_mode({})", c.mode));
        if (c.box >= 0)
            bench.tick(fmt::format("opt_s_mode({})", c.box));
        for (const char* button :
             {"Cm_Init_Wdog_W", "Cm_Timer2_W", "Cm_Regulator_W", "watchdog(12)", "Cm_Mode_RM_W(0)"})
            bench.press(button);
        bench.clock.idle(c.sleep * millisecond);
        EXPECT_EQ(bench.reading("Mode"),
                  c.mode == 0 ? "Low Power Vdd Off (Sleep)" : "Low Power Vdd On (Stop)");
        if (c.act[0] == '!')
            bench.turn(c.act + 1);
        else if (c.act[0] != '\0')
            bench.press(c.act);
        bench.clock.idle(c.awake * millisecond);
        EXPECT_EQ(bench.mode(), "Normal Request Mode");
        EXPECT_EQ(bench.after(c.read, c.row), c.lit);
    }
}

TEST(ChipBehindPanel, TakesWritesWithParityAndComplainsOfOthers) {
    ChipBench bench;
    const auto writes = [&](const char* row, const char* button, int byte) {
        bench.pokeTo(row, byte);
        return bench.effectsOf(button);
    };
    bench.tick("Ch_Init_Misc(6)");
    EXPECT_EQ(bench.effectsOf("Cm_Init_Misc_W"), "5040");
    EXPECT_EQ(writes("RAM", "Cm_Write_RAM(0)", 0x03), "4303");
    EXPECT_EQ(writes("RAM", "Cm_Write_RAM(3)", 0x07), "4807");
    EXPECT_EQ(bench.after("Cm_RAM_Rl_All", "RAM_A"), (Bits{0, 1}));
    EXPECT_EQ(bench.lit("RAM_D", plain), (Bits{0, 1, 2}));
    EXPECT_EQ(bench.after("Cm_RFl(3)", "IO_RFl"), Bits{});
    bench.tick("Ch_Init_Misc(6)"); // the panel alone; its last parity bit was 0
    EXPECT_EQ(writes("RAM", "Cm_Write_RAM(0)", 0x0F), "420F");
    EXPECT_EQ(bench.after("Cm_Read_RAM(0)", "RAM_A"), (Bits{0, 1})) << "not written";
    EXPECT_EQ(bench.status(), "0400");
    EXPECT_EQ(bench.after("Cm_RFl(3)", "IO_RFl"), Bits{5}) << "SPI ERR";
    EXPECT_EQ(writes("RAM", "Cm_Write_RAM(0)", 0x07), "4207");
    EXPECT_EQ(bench.after("Cm_RFl(3)", "IO_RFl"), Bits{});
    EXPECT_EQ(bench.after("Cm_Read_RAM(0)", "RAM_A"), (Bits{0, 1, 2}));
}

TEST(ChipBehindPanel, AnswersASequence) {
    ChipBench bench;
    bench.loop.drive(bench.program.forms());
    const std::vector<std::array<const char*, 4>> rows{
        // command, value, and what is answered
        {"MUX Write", "E8", " 0000  0000  (0)", " 0000  0000  (0)"},
        {"MUX Read Low", "", " 0000  0000  (0)", " 1110 1000  (E8)"},
        {"Special Mode", "2", "", ""},
        {"Mode RM Read Flag High", "80", " 0000  0000  (0)", " 0000  1011  (B)"},
        {"Special Mode", "1", "", ""},
        {"Simple WD", "100ms", "", ""},
        {"Wait", "5000", "", ""},
        {"Mode RM Read High", "80", " 0000  0000  (0)", " 0001 1111  (1F)"},
        {"Stop Watchdog", "", "", ""},
        {"Wait", "300", "", ""},
        {"Interrupts Read Flag High", "80", " 0010 0010  (22)", " 0000  0001  (1)"}};
    for (const auto& row : rows)
        bench.panel().sequence.lists.append(row[0], row[1]);
    EXPECT_EQ(bench.effectsOf("Cm_Run_Seq"),
              "40E8 0100 1300 5283 DD80 1300 526E <00 15 00 08 06 00 00 00> 1D80 "
              "<00 15 00 20 00 00 00 00> E580");
    for (const auto& [list, column] : {std::pair{"List_Val_read1", 2U}, {"List_Val_read0", 3U}}) {
        Texts answers{column == 2 ? "MSB in binary (hexa)" : "LSB in binary (hexa)"};
        for (const auto& row : rows)
            answers.emplace_back(row.at(column));
        EXPECT_EQ(bench.lines(fmt::format("ZT72518.{}", list)), answers);
    }
}

TEST(ChipBehindPanel, IsTrimmedInTestModeOnly) {
    ChipBench bench;
    const auto trim = [&](int fuse) {
        bench.get<forms::OptionButton>(fmt::format("TestMode.trim_fuse({})", fuse)).click();
        bench.click("TestMode.trim_send");
        return fmt::format("{} | {}", bench.reading("Test mode"), bench.reading("Trimming"));
    };
    for (const char* option : {"trim_version(3)", "trim_osci(7)", "trim_bias(3)"})
        bench.get<forms::OptionButton>(fmt::format("TestMode.{}", option)).click();
    EXPECT_EQ(trim(3), "off | none");
    bench.click("TestMode.enter_test_mode");
    EXPECT_EQ(trim(1), "27 FD | none");
    bench.get<forms::OptionButton>("TestMode.trim_fuse(3)").click();
    bench.get<forms::ScrollBar>("TestMode.trimming_txd").move(100);
    EXPECT_EQ(trim(3), "27 FF | 27 FF, TXD low 100");
    EXPECT_EQ(trim(2), "27 FE | 27 FF, TXD low 100");
}

TEST(ChipBehindPanel, IsOutOfReachOnTheParallelPort) {
    const Texts refusal{"WordToSend(i) is neither a 1 or a 0!!!\r\n"
                        "Check the USB cable and restart program"};
    TestBench bench("zt72518d");
    bench.configure("16");
    bench.program.forms().show("ZT72518");
    const auto press = [&](const std::string& button) {
        bench.session().LinkFailed = false;
        bench.click("ZT72518." + button);
        return bench.boxes.takeTexts();
    };
    for (const char* button :
         {"Cm_MUX_W", "Cm_Init_Reg_Rl", "Cm_RFl(1)", "Cm_ReadAll_Rl(1)", "Cm_ReadAll_RFl",
          "Cm_ReadAll_Rh", "Send_pre_prog(0)", "Send_pre_prog(6)", "watchdog(12)"}) {
        EXPECT_EQ(press(button), refusal) << button;
        EXPECT_TRUE(bench.session().LinkFailed) << button;
    }
    EXPECT_EQ(press("Cm_ReadAll_Rl(0)").size(), 15U) << "does not look whether the link failed";
    EXPECT_EQ(press("Cm_Mux_Rl"), Texts{}) << "a word of bits by chance";
    EXPECT_FALSE(bench.session().LinkFailed);
    bench.click("TestMode.term_send");
    EXPECT_EQ(bench.boxes.takeTexts(), refusal);
}

} // namespace
} // namespace bitlux::test
