#pragma once

#include "platform/system_information.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bitlux {

/// The program's name in titles, also of message boxes without a title.
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
    std::optional<Answer> preset = {}; ///< what Enter answers; the first button if empty
    /// Closing the box without a button goes back: it answers Cancel.
    bool canBeLeft = false;
    /// The handler that failed, as "frmMain.cmdSendOnce_Click"; for the details.
    std::string place = {};
    std::string hint = {}; ///< what may help, in a sentence
    /// Only says that the preceding file dialog was cancelled. A window does not show it, since its
    /// user knows.
    bool reportsCancel = false;
};

/// Whether a box is only informative: nothing has failed, and there is nothing to choose.
inline bool isNotice(const MessageBox& box) {
    return box.icon == MessageBox::Icon::Information && box.buttons == MessageBox::Buttons::Ok;
}

/// The answer that changes nothing, for a box without an answer.
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

/// Shows the hourglass during its lifetime.
class Hourglass {
public:
    explicit Hourglass(Pointer& pointer) : pointer_(pointer) { pointer_.showHourglass(true); }
    ~Hourglass() { pointer_.showHourglass(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    Pointer& pointer_;
};

/// The event loop that delivers user input. Long-running code runs it once per word.
class EventLoop {
public:
    virtual ~EventLoop() = default;
    /// Delivers pending events and returns; handlers of any form may run inside.
    virtual void turn() = 0;
    /// Sleeps until an event was delivered or the time-out in nanoseconds has elapsed, and returns
    /// at most a millisecond late.
    virtual void waitForEvents(std::int64_t nanoseconds) = 0;
};

/// The user interface of a program; all of it outlives the program.
struct Desk {
    MessageBoxes& boxes;
    FileDialogs& fileDialogs;
    Pointer& pointer;
    EventLoop& loop;
    SystemInformation* systemInformation = nullptr; ///< where there is one
    Sound* sound = nullptr;                         ///< null for silence
};

} // namespace bitlux
