#include "bench/scripted_desk.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace bitlux {

MessageBox::Answer ScriptedBoxes::show(const MessageBox& box) {
    shown_.push_back(box);
    answered_.emplace_back();
    if (box.buttons == MessageBox::Buttons::Ok &&
        (answers_.empty() || answers_.front() != MessageBox::Answer::Ok)) {
        answered_.back() = MessageBox::Answer::Ok;
        return MessageBox::Answer::Ok;
    }
    if (answers_.empty())
        throw UnansweredBox{box};
    const MessageBox::Answer answer = answers_.front();
    answers_.pop_front();
    answered_.back() = answer;
    return answer;
}

std::vector<std::string> ScriptedBoxes::takeTexts() {
    std::vector<std::string> texts;
    for (; taken_ < shown_.size(); ++taken_)
        texts.push_back(shown_[taken_].text);
    return texts;
}

std::optional<std::string> ScriptedFileDialogs::ask(const FileDialog& dialog) {
    shown_.push_back(dialog);
    answered_.emplace_back();
    if (!answers_.empty()) {
        answered_.back() = std::move(answers_.front());
        answers_.pop_front();
    }
    return answered_.back();
}

ScriptedLoop::ScriptedLoop(BenchClock& clock)
    : clock_(clock),
      timers_(clock),
      idle_([&clock](std::int64_t duration) { clock.idle(duration); }) {}

ScriptedLoop::ScriptedLoop(const SystemClock& clock)
    : clock_(clock), timers_(clock), idle_([](std::int64_t duration) {
          std::this_thread::sleep_for(std::chrono::nanoseconds(duration));
      }) {}

std::optional<std::int64_t> ScriptedLoop::nextDue() const {
    std::optional<std::int64_t> due = timers_.nextDue();
    if (!byTime_.empty() && (!due || byTime_.begin()->first < *due))
        due = byTime_.begin()->first;
    return due;
}

void ScriptedLoop::waitForEvents(std::int64_t nanoseconds) {
    if (!byTurn_.contains(turns_ + 1)) {
        const std::int64_t now = clock_.nanoseconds();
        const std::int64_t due = nextDue().value_or(now + nanoseconds);
        idle_(std::clamp<std::int64_t>(due - now, 0, std::max<std::int64_t>(nanoseconds, 0)));
    }
    turn();
}

void ScriptedLoop::turn() {
    ++turns_;
    if (auto due = byTurn_.extract(turns_))
        due.mapped()();
    const std::int64_t now = clock_.nanoseconds();
    for (std::optional<std::int64_t> due = nextDue(); due && *due <= now; due = nextDue())
        if (!byTime_.empty() && byTime_.begin()->first == *due)
            byTime_.extract(byTime_.begin()).mapped()();
        else
            timers_.fireNext();
}

void ScriptedLoop::atTime(std::int64_t time, std::function<void()> action) {
    byTime_.emplace(time, std::move(action));
}

} // namespace bitlux
