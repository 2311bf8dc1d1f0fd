#pragma once

#include "platform/desk.h"

#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace bitlux {

/// Message boxes on a terminal: the text is printed on the error stream. Of several buttons the
/// cautious one is pressed, since nobody is asked.
class TerminalBoxes : public MessageBoxes {
public:
    explicit TerminalBoxes(std::ostream& errors) : errors_(errors) {}
    MessageBox::Answer show(const MessageBox& box) override;

    /// Whether a box other than a notice was shown.
    [[nodiscard]] bool shown() const { return shown_; }
    /// A prefix of messages with the position of the command.
    std::function<std::string()> where;

protected:
    void print(const MessageBox& box);
    [[nodiscard]] std::ostream& errors() { return errors_; }

private:
    std::ostream& errors_;
    bool shown_ = false;
};

/// A file dialog on a terminal: returns the name from the command line.
class GivenFileName : public FileDialogs {
public:
    explicit GivenFileName(std::string fileName) : fileName_(std::move(fileName)) {}
    std::optional<std::string> ask(const FileDialog&) override { return fileName_; }

private:
    std::string fileName_;
};

} // namespace bitlux
