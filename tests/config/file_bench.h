#pragma once

#include "sending/batch_bench.h"

#include <string>

#include <gtest/gtest.h>

namespace bitlux::test {

/// One box was shown, whose text has this part.
inline void expectBox(const Texts& texts, const std::string& part) {
    ASSERT_EQ(texts.size(), 1U) << part;
    EXPECT_NE(texts[0].find(part), std::string::npos) << texts[0];
}

/// A bench that opens and saves files.
struct FileBench : BatchBench {
    using BatchBench::BatchBench;

    Texts open(const std::string& name) {
        fileDialogs.answer(name);
        choose("frmMain.itemOpen");
        return boxes.takeTexts();
    }
    /// Opens a file with these lines after the first record of the present format.
    Texts openRecords(const std::string& records) {
        return open(folder.write(
            "records.spi", "\"Bitlux Configuration File (Version 3.x.x)\",\"\"\r\n" + records));
    }
    Texts saveAs(const std::string& name) {
        fileDialogs.answer(name);
        choose("frmMain.itemSaveAs");
        return boxes.takeTexts();
    }

    TemporaryFolder folder;
};

} // namespace bitlux::test
