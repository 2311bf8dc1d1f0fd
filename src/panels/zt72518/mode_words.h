#pragma once

#include "panels/common/panel_controls.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// The modes of the ZT7251x family: the words that change the mode, and the display of the mode.
namespace bitlux::zt72518 {

/// One of the words that change the mode. A box may select one of two words, or whether a word is
/// sent.
struct ModeWord {
    std::uint16_t word = 0;                   ///< sent when the box is ticked, or always
    int box = -1;                             ///< the pre_prog_box
    std::optional<std::uint16_t> whenClear{}; ///< sent when it is not ticked
    bool onlyWhereEnabled = false;            ///< left out on variants that disable the box
};

/// The words that a button of the diagram sends.
struct ModeButton {
    std::string_view caption;
    std::span<const ModeWord> words;
    /// Value of the select bits in the inverted random word that enters the mode, sent before
    /// `words`.
    std::optional<std::uint8_t> select{};
    bool skipsEntry = false; ///< sends no words for entering the mode when the chip is in it
};

inline constexpr std::uint16_t readRandomWord = 0x1300;
inline constexpr std::uint8_t specialModeWriteHigh = 0x52;
inline constexpr std::uint16_t readModeWord = 0xDD80;

/// By the index of the button.
extern const std::array<ModeButton, 7> modeButtons;

/// Captions of the boxes of the diagram.
extern const std::array<std::string_view, 17> modeBoxes;
inline constexpr int autoReadingBox = 10;
inline constexpr int modeLines = 10; ///< number of transitions in the picture

/// The display for a low byte of the mode flags from `least` to `most`.
struct ShownMode {
    int least = 0;
    int most = 0;
    std::string_view caption;
    ControlRef highlight;
    std::span<const int> lines; ///< transitions that are possible from here
};
extern const std::array<ShownMode, 6> shownModes;

/// Names of the modes by the five mode bits of the mode register's high view, and the two names for
/// all other values.
inline constexpr std::array<std::string_view, 4> modeNames{"Init Mode", "Flash Mode",
                                                           "Normal Request Mode", "Normal Mode"};
inline constexpr std::string_view lowPowerName = "Low Power Vdd On Mode (Stop)";
inline constexpr std::string_view otherModeName = "Other Mode";
inline constexpr int modeShift = 3; ///< of the mode bits
/// Label of `Mode_Rm_Rh` that has the first of these names; the others follow.
inline constexpr int firstModeLabel = 8;
inline constexpr int identityLabel = 14;

/// Captions of the device identity by bits 6 and 5 and by bits 4 and 3 of its byte.
inline constexpr std::array<std::string_view, 4> deviceNames{"ZT72514 - ", "ZT72511 - ",
                                                             "ZT72518S - ", "ZT72518D - "};
inline constexpr std::array<std::string_view, 4> versionNames{"v1.", "v2.", "v3.", "v4."};

/// A low-power mode of the mode page: its mode bits, and the bits that its boxes add, -1 for none.
struct LowPowerMode {
    std::string_view caption;
    std::uint8_t bits = 0;
    std::array<int, 4> boxBits{};
};
inline constexpr std::array<LowPowerMode, 2> lowPowerModes{
    {{"Low Power Vdd Off (Sleep)", 0x60, {4, 3, -1, -1}},
     {"Low Power Vdd On (Stop)", 0x80, {6, 5, 4, 3}}}};
inline constexpr std::array<std::string_view, 4> lowPowerBoxes{
    "FWU : Enable the force wake up feature in low power mode",
    "CYC_Sense : the I/O_0 output driver will assume the initial state",
    "CYC_Int : Enable the CYCLIC INTERRUPTION feature in STP mode",
    "WD_Enable : Enable the Wdog in STOP mode"};
inline constexpr int wakeUpBit = 4; ///< of the mode register, alone: wake up by chip select

} // namespace bitlux::zt72518
