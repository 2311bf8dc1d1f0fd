#include "bench/scripted_desk.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace bitlux {

MessageBox::Answer ScriptedBoxes::show(const MessageBox& box) {
    shown_.push_back(box);
    if (box.buttons == MessageBox::Buttons::Ok)
        return MessageBox::Answer::Ok;
    if (answers_.empty())
        throw UnansweredBox{box};
    const MessageBox::Answer answer = answers_.front();
    answers_.pop_front();
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
    if (answers_.empty())
        return std::nullopt;
    std::optional<std::string> answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
}

ScriptedLoop::ScriptedLoop(BenchClock& clock)
    : clock_(clock), idle_([&clock](std::int64_t duration) { clock.idle(duration); }) {}

ScriptedLoop::ScriptedLoop(const SystemClock& clock)
    : clock_(clock), idle_([](std::int64_t duration) {
          std::this_thread::sleep_for(std::chrono::nanoseconds(duration));
      }) {}

void ScriptedLoop::waitForEvents(std::int64_t nanoseconds) {
    if (!byTurn_.contains(turns_ + 1)) {
        const std::int64_t now = clock_.nanoseconds();
        const std::int64_t due = byTime_.empty() ? now + nanoseconds : byTime_.begin()->first;
        idle_(std::clamp<std::int64_t>(due - now, 0, std::max<std::int64_t>(nanoseconds, 0)));
    }
    turn();
}

void ScriptedLoop::turn() {
    ++turns_;
    if (auto due = byTurn_.extract(turns_))
        due.mapped()();
    while (!byTime_.empty() && byTime_.begin()->first <= clock_.nanoseconds()) {
        auto due = byTime_.extract(byTime_.begin());
        due.mapped()();
    }
}

void ScriptedLoop::atTime(std::int64_t time, std::function<void()> action) {
    byTime_.emplace(time, std::move(action));
}

} // namespace bitlux
