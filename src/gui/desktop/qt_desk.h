#pragma once

#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "platform/linux/system_tool.h"

#include <cstdint>
#include <optional>
#include <string>

#include <QPointer>
#include <QWidget>

namespace bitlux::gui {

/// Message boxes over the active window. Shift+Escape closes a box without a button.
class QtBoxes : public MessageBoxes {
public:
    /// Shift+Escape in a box.
    Event<> abortRequested;

    MessageBox::Answer show(const MessageBox& box) override;
};

/// The file dialogs of the toolkit.
class QtFileDialogs : public FileDialogs {
public:
    std::optional<std::string> ask(const FileDialog& dialog) override;
};

class QtPointer : public Pointer {
public:
    void showHourglass(bool busy) override;
};

class QtSound : public Sound {
public:
    void beep() override;
};

/// The event loop of the toolkit. A continuous run asks for a turn after every word, which may be
/// every few microseconds; delivering events once a millisecond is fast enough for a user.
class QtEventLoop : public EventLoop {
public:
    static constexpr std::int64_t shortestTurn = 1'000'000; ///< nanoseconds

    static constexpr std::int64_t polledStretch = 2'000'000; ///< nanoseconds before a deadline

    void turn() override;
    void waitForEvents(std::int64_t nanoseconds) override;

private:
    SystemClock clock_;
    std::int64_t lastTurn_ = 0;
};

/// The desk of the window.
struct QtDesk {
    [[nodiscard]] Desk desk() {
        return {.boxes = boxes,
                .fileDialogs = fileDialogs,
                .pointer = pointer,
                .loop = loop,
                .systemInformation = &systemInformation,
                .sound = &sound};
    }

    QtBoxes boxes;
    QtFileDialogs fileDialogs;
    QtPointer pointer;
    QtEventLoop loop;
    LinuxSystemTool systemInformation;
    QtSound sound;
};

} // namespace bitlux::gui
