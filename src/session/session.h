#pragma once

#include "session/batch_lists.h"
#include "session/flag.h"
#include "session/port_pins.h"
#include "session/quick_command_table.h"
#include "session/saved_dialog.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace bitlux {

/// The chip of a part-specific tab of the main window.
struct PartTab {
    std::int32_t PartNumber = 0;
    std::int16_t FrameIndex = 0;
    std::string TitleText;
    std::int16_t WordLength = 0;
    std::int16_t TypeNumber = 0;
};

/// The working state of the program: one block of variables that every module reads and that
/// depends on none. The initial values are those at the beginning of the start-up; Apply then sets
/// the dialog's defaults.
///
/// Bits and pin levels are 16-bit integers 0 and 1. In arrays of bits, element i is bit i of the
/// word and element 0 the least significant.
struct Session {
    std::int16_t BuildNumber = 4457;

    // The shape of a word
    std::int16_t SPIWordLength = 32; ///< bits, 1 to MaxSPIBits
    std::int16_t SavedSPIWordLength = 0;
    std::int16_t MaxSPIBits = 160;
    std::int16_t SPIType = 1; ///< 1 to 8
    std::int16_t SavedSPIType = 1;
    std::int16_t SPITypeTab = 1;
    Flag MSBFirst = ConstOn;
    std::int16_t DisplayHex = 0; ///< 1 hexadecimal, 0 binary display of words

    // Levels of asserted, idle, one and zero
    std::int16_t CSAssertLevel = ConstLow;
    std::int16_t CSIdleLevel = ConstHigh;
    std::int16_t DIOneLevel = ConstHigh;
    std::int16_t DIZeroLevel = ConstLow;
    std::int16_t ClockHighLevel = ConstHigh;
    std::int16_t ClockLowLevel = ConstLow;
    std::int16_t DOHighValue = 1;
    std::int16_t DOLowValue = 0;

    // The parallel port
    bool ParallelPortReady = false;
    std::int16_t LPTPortAddress = 0;
    std::array<std::int16_t, 4> LPTPortAddresses{};
    std::string AdapterInUse;      ///< the adapter that is used as the port; empty without one
    std::int32_t AdapterClock = 0; ///< bytes a second of that adapter, 0 before it was opened
    std::int16_t DIPin = 0;        ///< bits 0 to 7 of the data register
    std::int16_t CSPin = 0;
    std::int16_t ClockPin = 0;
    std::int16_t DOPin = 0; ///< bit 3 to 7 of the status register
    PortPins<8> DataPortPins;
    PortPins<4> ControlPortPins;

    // The dongle
    bool USBReady = false;
    bool USBReadDone = false;      ///< the answer to the pending frame has arrived
    std::int16_t SPIBaudRate = 64; ///< code of the clock: 0, 64, 128, 192
    std::int16_t USBPinUpdate = 0; ///< 1 while a word carries a change of the extra pins
    std::uint8_t USBExtraPins0 =
        0; ///< bits 0 to 4: Data 0 to Data 4; 5 to 7: Control 0 to Control 2
    std::uint8_t USBExtraPins1 = 0;     ///< bit 0: Control3
    bool USBFrameTopBit = false;        ///< the next frame has 0x80 added to its first byte
    bool FirmwareUpdateRequest = false; ///< the next word asks the dongle for its boot loader
    bool InterruptSeen = false;         ///< the chip's lines as last sampled by the dongle
    bool ResetSeen = false;

    // Panels whose labels are refreshed: 1 when open
    std::uint8_t ZT72518PanelActive = 0;
    std::uint8_t ZT72516PanelActive = 0;
    std::uint8_t ZT72361PanelActive = 0;
    std::uint8_t ZT72537PanelActive = 0;
    std::uint8_t ZT72361Data = 0;       ///< data of the last write of that panel
    std::uint8_t ZT72537FrameByte7 = 0; ///< last byte of every word while that panel is open

    // The ZT72518 panel and the dongle's commands for its watchdog
    std::uint8_t ZT72518WordHigh = 0;
    std::uint8_t ZT72518WordLow = 0;
    std::uint8_t ZT72518ReplyHigh = 0;
    std::uint8_t ZT72518ReplyLow = 0;
    bool WdConfigRequest = false;    ///< the next send_wd starts as the panel is set
    bool WdSequenceRequest = false;  ///< the next send_wd starts as the sequence says
    std::int16_t WdSequenceMode = 0; ///< 0 simple, 1, 2, 3 enhanced 1, 2, 4
    std::int16_t WdSequenceTime = 0; ///< number in the list of times
    bool WdCurrentOn = false;        ///< the next send_wd_current starts, else stops
    bool WdStopRequest = false;      ///< the next send_wd stops

    bool ZT72516WatchdogStart = false; ///< the next Send72516WatchdogCmd starts, else stops

    // The ZT72517 on its byte-wide link
    bool PSPIModeChange = false; ///< the next frame changes its lines, and has no byte for the chip
    std::int16_t PSPIMode = 0;   ///< the lines: NSTB in bit 0, EN in bit 1
    std::uint8_t PSPIReply = 0;  ///< its last answer

    /// Set when a transfer failed; automatic senders check it and stop.
    bool LinkFailed = false;

    // The current word
    bool WordAnswered = false; ///< false: the zeros in WordReceived are not an answer
    std::vector<std::int16_t> WordToSend;
    std::vector<std::int16_t> WordReceived;
    std::vector<std::int16_t> PortStatusSamples; ///< raw status register, one read per bit
    std::vector<std::int16_t> SingleWordBits;    ///< the word of the single-word page

    // Named words
    bitlux::QuickCommandTable QuickCommandTable;
    Flag QuickCommandTableEmpty = ConstOn;
    bool StopSending = false; ///< the stored word shown last has an element that is not a bit
    BatchLists lstBatchList;
    /// One more than there are Batches.
    [[nodiscard]] int BatchCount() const { return lstBatchList.count() + 1; }

    // Session Log
    Flag SessionLogEnabled = ConstOn;
    std::int16_t SessionLogCapacity = 20000; ///< lines at which sending is refused
    Flag ContinuousLogEnabled = ConstOn;
    std::int16_t ContinuousLogLimit = 5; ///< words of a continuous run that are logged
    std::int16_t ContinuousLogCount = 1; ///< number of the word in the run, from 1
    std::int32_t SessionLogCount = 0;
    std::string LogFileName;

    // Window
    std::int16_t ActiveMainTab = 1; ///< 1 single word, 2 multiple commands, from 3 part tabs
    std::int16_t ConfigTab = 1;
    std::int16_t LogPinsTab = 1;
    std::int16_t LogPinsNowTab = 1;
    std::array<PartTab, 4> PartTabs;    ///< in the order of the tabs from 3 on
    std::vector<std::string> UserChips; ///< enabled chips, including those without a file
    std::string PartName;

    // Configuration
    std::string ConfigFileName;
    std::string CommandLine;          ///< a file name, verbatim
    bool OpenFromCommandLine = false; ///< the next Open opens that file
    Flag ConfigDirty = ConstOff;
    SavedDialog Saved;          ///< what Cancel restores
    Flag StartingUp = ConstOff; ///< on until the first Apply has run
};

} // namespace bitlux
