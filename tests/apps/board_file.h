#pragma once

#include <string>

namespace bitlux::test {

/// A configuration file of the port: words of 8 bits, a pin, two Batches; names with characters of
/// its code page, and characters that are special to JSON and terminals.
inline const std::string boardFile =
    "\"Bitlux Configuration File (Version 3.x.x)\",\"Verification Line\"\r\n"
    "\"[PartName]\",\"B\xFCro\"\r\n"
    "\"[SPIWordLength]\",\"8\"\r\n"
    "\"[BinaryMode]\",#FALSE#\r\n"
    "\"[SerialMode]\",0\r\n"
    "\"[Data0Enable]\",1\r\n"
    "\"[Data0Name]\",\"EN\"\r\n"
    "\"[Data0Assignment]\",\"5\"\r\n"
    "\"[ApplyNow]\",\"\"\r\n"
    "\"[QuickCommand]\",\"1 0 1 0 0 1 0 1 read id\"\r\n"
    "\"[QuickCommand]\",\"0 0 0 0 1 1 1 1 gr\xFCn \"a\\b\" \x1B[2J\"\r\n"
    "\"[CommandToSend]\",\"read id\"\r\n"
    "\"[CommandToSend]\",\"* Wait 2 hrs\"\r\n"
    "\"[CommandToSend]\",\"* Set HIGH: EN\"\r\n"
    "\"[CommandToSend]\",\"* Set LOW: DIS\"\r\n"
    "\"[CommandToSend]\",\"gr\xFCn \"a\\b\" \x1B[2J\"\r\n"
    "\"[BatchItem]\",\"1 sweep\"\r\n"
    "\"[BatchItem]\",\"1 read id\"\r\n"
    "\"[BatchItem]\",\"1 * Wait 5 ms\"\r\n"
    "\"[BatchItem]\",\"1 * Set HIGH: EN\"\r\n"
    "\"[BatchItem]\",\"1 read id\"\r\n"
    "\"[BatchItem]\",\"2 hold on\"\r\n"
    "\"[BatchItem]\",\"2 read id\"\r\n"
    "\"[BatchItem]\",\"2 * Pause\"\r\n"
    "\"[BatchItem]\",\"2 read id\"\r\n";

/// The same file with the dongle chosen.
inline std::string dongleFile() {
    std::string text = boardFile;
    const std::string mode = "\"[SerialMode]\",";
    text[text.find(mode) + mode.size()] = '1';
    return text;
}

} // namespace bitlux::test
