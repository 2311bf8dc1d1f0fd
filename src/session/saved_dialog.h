#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace bitlux {

/// The configuration dialog as it was last accepted; Cancel restores it.
struct SavedDialog {
    std::string SavedPartName;
    std::string SavedWordLengthText;
    std::string SavedCSText;
    std::string SavedDIText;
    std::string SavedDOText;
    std::string SavedCLKText;
    bool SavedCSnegative = true;
    bool SavedDIpolarity_pos = true;
    bool SavedDOpolarity_pos = true;
    std::string SavedSPITypeCaption; ///< of the selected tab
    bool SavedBinary = true;
    bool SavedMSBfirst = true;
    bool SavedLogOff = false;
    bool SavedLogForever = false;
    bool SavedLogFixed = true;

    // Of the parallel port
    std::array<std::int16_t, 5> SavedDataPinEnable{};
    std::array<std::string, 5> SavedDataPinName;
    std::array<int, 5> SavedDataPinIndex{}; ///< of the list of pins, -1 for none
    std::array<std::int16_t, 4> SavedControlPinEnable{};
    std::array<std::string, 4> SavedControlPinName;
    std::array<int, 4> SavedControlPinIndex{};
    std::int16_t SavedHardCode3BC = 0;
    std::int16_t SavedHardCode378 = 0;
    std::int16_t SavedHardCode278 = 0;
    int SavedPortListIndex = -1; ///< of the list of ports
    int SavedPortIndex = 0;      ///< number n of LPTn, 0 for an adapter
};

} // namespace bitlux
