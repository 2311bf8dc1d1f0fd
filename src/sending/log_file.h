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

/// A file that receives the lines of every word immediately, without limit, whether or not the list
/// of the Session Log records them.
class LogFile {
public:
    LogFile(forms::Form& form, const Desk& desk);

    [[nodiscard]] bool isOn() const { return file_.has_value(); }
    /// A file is open, or has ended early and this was not acknowledged: logging by its rules
    /// continues.
    [[nodiscard]] bool isWanted() const { return isOn() || !failure_.empty(); }
    /// Empty while no file is open.
    [[nodiscard]] std::string fileName() const { return isOn() ? file_->fileName() : ""; }
    /// Why the last one ended before its time, as a sentence without its full stop; empty when it
    /// did not.
    [[nodiscard]] const std::string& failure() const { return failure_; }

    /// Writes lines to this file from now on; its old content is lost. Raises Failure (File) when
    /// it cannot be written.
    void begin(const std::string& fileName);
    void end();
    /// Adds lines, given without their ends. When the disk is full the file ends after the last
    /// word, and sending continues.
    template <typename Lines>
    void add(const Lines& lines) {
        text_.clear();
        for (const auto& line : lines)
            (text_ += line) += "\r\n";
        write();
    }

    /// Asks for a file and opens it; closes the file when one is open.
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
