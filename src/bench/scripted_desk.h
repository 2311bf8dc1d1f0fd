#pragma once

#include "bench/bench_clock.h"
#include "bench/form_timers.h"
#include "platform/desk.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// A box with a choice was shown without a prepared answer. Not a std::exception, so that no
/// handler treats it as a failure of its own.
struct UnansweredBox {
    MessageBox box;
};

/// Message boxes that a script answers. A box with one button uses the next answer only if that
/// names its button, and answers itself otherwise.
class ScriptedBoxes : public MessageBoxes {
public:
    MessageBox::Answer show(const MessageBox& box) override;

    /// The answer to a later box; answers are used in order.
    void answer(MessageBox::Answer answer) { answers_.push_back(answer); }
    /// All boxes shown so far.
    [[nodiscard]] const std::vector<MessageBox>& shown() const { return shown_; }
    /// Their answers, nothing for a box without a prepared one.
    [[nodiscard]] const std::vector<std::optional<MessageBox::Answer>>& answered() const {
        return answered_;
    }
    /// The texts of the boxes shown since the last call.
    std::vector<std::string> takeTexts();

private:
    std::deque<MessageBox::Answer> answers_;
    std::vector<MessageBox> shown_;
    std::vector<std::optional<MessageBox::Answer>> answered_;
    std::size_t taken_ = 0;
};

/// File dialogs that a script answers; one without an answer is cancelled.
class ScriptedFileDialogs : public FileDialogs {
public:
    std::optional<std::string> ask(const FileDialog& dialog) override;

    /// The answer to a later dialog, nothing for Cancel; answers are used in order.
    void answer(std::optional<std::string> fileName) { answers_.push_back(std::move(fileName)); }
    [[nodiscard]] const std::vector<FileDialog>& shown() const { return shown_; }
    /// Their answers, nothing for Cancel.
    [[nodiscard]] const std::vector<std::optional<std::string>>& answered() const {
        return answered_;
    }

private:
    std::deque<std::optional<std::string>> answers_;
    std::vector<FileDialog> shown_;
    std::vector<std::optional<std::string>> answered_;
};

/// An event loop with events prepared in advance: actions at a turn or at a time of the clock. It
/// also drives the timers of forms.
class ScriptedLoop : public EventLoop {
public:
    /// Waiting advances the clock.
    explicit ScriptedLoop(BenchClock& clock);
    /// Waiting takes real time, which the clock shows.
    explicit ScriptedLoop(const SystemClock& clock);

    void turn() override;
    /// Advances to the next due action or timer, if the wait is long enough.
    void waitForEvents(std::int64_t nanoseconds) override;

    /// From now on fires the timers of these forms, in the turns at or after their times.
    void drive(forms::FormSet& forms) { timers_.drive(forms); }

    /// Runs `action` in the n-th turn from now, from 1.
    void atTurn(int n, std::function<void()> action) { byTurn_[turns_ + n] = std::move(action); }
    /// Runs `action` in the first turn at or after a time of the clock, in nanoseconds.
    void atTime(std::int64_t time, std::function<void()> action);

    [[nodiscard]] int turns() const { return turns_; }

private:
    /// Time of the next due event.
    [[nodiscard]] std::optional<std::int64_t> nextDue() const;

    const Clock& clock_;
    FormTimers timers_;
    std::function<void(std::int64_t)> idle_;
    std::map<int, std::function<void()>> byTurn_;
    std::multimap<std::int64_t, std::function<void()>> byTime_;
    int turns_ = 0;
};

/// A mouse pointer without a display.
class QuietPointer : public Pointer {
public:
    void showHourglass(bool busy) override { busy_ = busy; }
    [[nodiscard]] bool busy() const { return busy_; }

private:
    bool busy_ = false;
};

/// A bell that is counted.
class CountedSound : public Sound {
public:
    void beep() override { ++beeps_; }
    [[nodiscard]] int beeps() const { return beeps_; }

private:
    int beeps_ = 0;
};

/// A desk operated by a script.
struct ScriptedDesk {
    explicit ScriptedDesk(BenchClock& clock) : loop(clock) {}
    explicit ScriptedDesk(const SystemClock& clock) : loop(clock) {}

    [[nodiscard]] Desk desk() {
        return {.boxes = boxes,
                .fileDialogs = fileDialogs,
                .pointer = pointer,
                .loop = loop,
                .sound = &sound};
    }

    ScriptedBoxes boxes;
    ScriptedFileDialogs fileDialogs;
    QuietPointer pointer;
    ScriptedLoop loop;
    CountedSound sound;
};

} // namespace bitlux
