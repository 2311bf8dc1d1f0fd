#pragma once

#include "platform/system_information.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bitlux {

/// The name that stands in titles, also of message boxes that bring none of their own.
inline constexpr const char* applicationTitle = "Bitlux Forge";

/// Joins the lines of a message.
inline constexpr const char* lineBreak = "\r\n";

struct MessageBox {
    enum class Buttons { Ok, OkCancel, YesNo };
    enum class Icon { None, Question, Exclamation, Information };
    enum class Answer { Ok, Cancel, Yes, No };

    std::string text;
    std::string title = applicationTitle;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    std::optional<Answer> preset = {}; ///< what Enter answers; the first button without it
    /// A hand that closes it without a button goes back to where it was: this answers Cancel.
    bool canBeLeft = false;
    /// The handler that failed, as "frmMain.cmdSendOnce_Click"; for who asks for details.
    std::string place = {};
    std::string hint = {}; ///< what may help, in a sentence
    /// Only says that the file dialog before it was cancelled. A window, where somebody has just
    /// done that, does not show it.
    bool tellsOfCancel = false;
};

/// Whether a box only tells something: nothing has failed, and there is nothing to choose.
inline bool isNotice(const MessageBox& box) {
    return box.icon == MessageBox::Icon::Information && box.buttons == MessageBox::Buttons::Ok;
}

/// The answer that changes nothing, for a box that nobody answered.
constexpr MessageBox::Answer cautiousAnswer(MessageBox::Buttons buttons) {
    switch (buttons) {
    case MessageBox::Buttons::OkCancel:
        return MessageBox::Answer::Cancel;
    case MessageBox::Buttons::YesNo:
        return MessageBox::Answer::No;
    case MessageBox::Buttons::Ok:
        break;
    }
    return MessageBox::Answer::Ok;
}

/// Shows message boxes; the call returns when the user has answered.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual MessageBox::Answer show(const MessageBox& box) = 0;
};

struct FileDialog {
    enum class Kind { Open, Save };

    Kind kind = Kind::Open;
    std::string title;
    std::string filter;   ///< pairs "text|pattern" joined by '|'
    std::string fileName; ///< what the dialog starts on
};

/// Asks for a file name; nothing when the user cancels.
class FileDialogs {
public:
    virtual ~FileDialogs() = default;
    virtual std::optional<std::string> ask(const FileDialog& dialog) = 0;
};

/// The mouse pointer.
class Pointer {
public:
    virtual ~Pointer() = default;
    virtual void showHourglass(bool busy) = 0;
};

/// The bell.
class Sound {
public:
    virtual ~Sound() = default;
    virtual void beep() = 0;
};

/// The hourglass for as long as it lives.
class Hourglass {
public:
    explicit Hourglass(Pointer& pointer) : pointer_(pointer) { pointer_.showHourglass(true); }
    ~Hourglass() { pointer_.showHourglass(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    Pointer& pointer_;
};

/// The loop that delivers what the user does. Long-running code gives it one turn a word.
class EventLoop {
public:
    virtual ~EventLoop() = default;
    /// Delivers what is pending and returns; handlers of any form may run inside.
    virtual void turn() = 0;
    /// Sleeps until something was delivered or so many nanoseconds are over, and then returns, at
    /// most a millisecond late.
    virtual void waitForEvents(std::int64_t nanoseconds) = 0;
};

/// What a program meets its user with; all of it outlives the program.
struct Desk {
    MessageBoxes& boxes;
    FileDialogs& fileDialogs;
    Pointer& pointer;
    EventLoop& loop;
    SystemInformation* systemInformation = nullptr; ///< where there is one
    Sound* sound = nullptr;                         ///< silence when there is none
};

} // namespace bitlux
