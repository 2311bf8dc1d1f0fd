#pragma once

#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/growing_file.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace bitlux {

/// A file that takes the lines of every word as they come, without limit, whatever the list of the
/// Session Log takes.
class LogFile {
public:
    LogFile(forms::Form& form, const Desk& desk);

    [[nodiscard]] bool isOn() const { return file_.has_value(); }
    /// One is on, or has ended early and nobody has looked: what it wanted goes on.
    [[nodiscard]] bool isWanted() const { return isOn() || !failure_.empty(); }
    /// Empty while none is on.
    [[nodiscard]] std::string fileName() const { return isOn() ? file_->fileName() : ""; }
    /// Why the last one ended before its time, as a sentence without its full stop; empty when it
    /// did not.
    [[nodiscard]] const std::string& failure() const { return failure_; }

    /// Lines go to this file from now on; what it held goes. Raises Failure (File) when it cannot
    /// be written.
    void begin(const std::string& fileName);
    void end();
    /// Adds lines, given without their ends. Where there is no room the file ends behind the last
    /// word, and sending goes on.
    template <typename Lines>
    void add(const Lines& lines) {
        text_.clear();
        for (const auto& line : lines)
            (text_ += line) += "\r\n";
        write();
    }

    /// Asks for a file and begins it; ends the one that is on instead.
    void itemLogToFile_Click();

    /// It ended before its time.
    Event<> failed;

private:
    void write();
    void showItem();

    Desk desk_;
    std::optional<GrowingFile> file_;
    std::string failure_;
    std::string text_;

public:
    forms::MenuItem itemLogToFile;
};

} // namespace bitlux
