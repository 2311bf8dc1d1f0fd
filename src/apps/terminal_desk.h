#pragma once

#include "platform/desk.h"

#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace bitlux {

/// Message boxes on a terminal: the text on the error stream. Where there is a choice the
/// cautious button is taken, since nobody is asked.
class TerminalBoxes : public MessageBoxes {
public:
    explicit TerminalBoxes(std::ostream& errors) : errors_(errors) {}
    MessageBox::Answer show(const MessageBox& box) override;

    /// Whether any box was shown that is more than a notice.
    [[nodiscard]] bool shown() const { return shown_; }
    /// What stands before a message and tells where the command is.
    std::function<std::string()> where;

protected:
    void print(const MessageBox& box);
    [[nodiscard]] std::ostream& errors() { return errors_; }

private:
    std::ostream& errors_;
    bool shown_ = false;
};

/// A file dialog on a terminal: the name that the command line gave.
class GivenFileName : public FileDialogs {
public:
    explicit GivenFileName(std::string fileName) : fileName_(std::move(fileName)) {}
    std::optional<std::string> ask(const FileDialog&) override { return fileName_; }

private:
    std::string fileName_;
};

} // namespace bitlux
