#include "panels/common/sequence_lists.h"

#include <algorithm>
#include <map>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

/// Numbers from 0 on, an arrow after one of them; as many as are prepared, or as the arrow needs.
/// Other texts may be numbers too.
class SequenceLists::LineNumbers : public forms::LineSource {
public:
    explicit LineNumbers(std::size_t prepared) : prepared_(prepared) {}

    static constexpr int nowhere = -1;

    int arrow = 1;
    std::map<std::size_t, std::string> texts;

    [[nodiscard]] std::size_t size() const override {
        return std::max(prepared_, static_cast<std::size_t>(arrow + 1));
    }
    [[nodiscard]] std::string line(std::size_t index) const override {
        const auto other = texts.find(index);
        return (other != texts.end() ? other->second
                                     : fmt::format("{}{}", index < 10 ? "  " : "", index)) +
               (static_cast<int>(index) == arrow ? "  ---->" : "");
    }

private:
    std::size_t prepared_;
};

SequenceLists::Answers::Answers(forms::Form& form, const chips::SequenceStyle::Column& column)
    : header(column.title),
      lines(std::make_shared<forms::TextLines>()),
      list(form, column.list, lines) {}

SequenceLists::SequenceLists(forms::Form& form, const chips::SequenceStyle& style)
    : numbers_(std::make_shared<LineNumbers>(static_cast<std::size_t>(style.numbers))),
      valueHeader_(style.valueTitle),
      arrowAtLine_(style.arrowAtLine),
      List_Commands(form, "List_Commands", commands_),
      List_Value(form, "List_Value", values_),
      List1(form, "List1", numbers_) {
    for (const chips::SequenceStyle::Column& column : style.answers)
        answers_.push_back(std::make_unique<Answers>(form, column));
    clear();
}

std::string SequenceLists::command(int row) const {
    return List_Commands.line(static_cast<std::size_t>(row));
}

std::string SequenceLists::value(int row) const {
    return List_Value.line(static_cast<std::size_t>(row));
}

void SequenceLists::append(const std::string& command, const std::string& value) {
    insert(last() + 1, command, value);
}

void SequenceLists::insert(int row, const std::string& command, const std::string& value) {
    commands_->insert(static_cast<std::size_t>(row), command);
    values_->insert(static_cast<std::size_t>(row), value);
    for (forms::ListBox* list : {&List_Commands, &List_Value})
        list->linesChanged(list->listIndex() + (list->listIndex() >= row ? 1 : 0));
}

void SequenceLists::remove(int row) {
    commands_->remove(static_cast<std::size_t>(row));
    values_->remove(static_cast<std::size_t>(row));
    const int command = List_Commands.listIndex();
    List_Commands.linesChanged(command - (command > row ? 1 : 0));
    const int value = List_Value.listIndex(); // what is edited must not become that of another line
    List_Value.linesChanged(value == row ? -1 : value - (value > row ? 1 : 0));
}

void SequenceLists::move(int from, int to) {
    const std::string movedCommand = command(from);
    const std::string movedValue = value(from);
    const bool commandSelected = List_Commands.listIndex() == from;
    const bool valueSelected = List_Value.listIndex() == from;
    remove(from);
    insert(to, movedCommand, movedValue);
    if (commandSelected)
        List_Commands.linesChanged(to);
    if (valueSelected)
        List_Value.linesChanged(to);
}

void SequenceLists::setValue(int row, const std::string& value) {
    values_->replace(static_cast<std::size_t>(row), value);
    List_Value.linesChanged();
}

void SequenceLists::assign(SequenceRows rows) {
    commands_->assign(std::move(rows.commands));
    values_->assign(std::move(rows.values));
    List_Commands.linesChanged(-1);
    List_Value.linesChanged(-1);
    clearAnswers();
}

void SequenceLists::assignAndSelectLast(SequenceRows rows) {
    assign(std::move(rows));
    List_Commands.linesChanged(last());
    List_Value.linesChanged(last());
}

void SequenceLists::clear() {
    assign({.commands = {std::string(commandHeader)}, .values = {valueHeader_}});
    numbers_->texts.clear();
    pointTo(1);
}

void SequenceLists::clearAnswers() {
    for (const auto& column : answers_) {
        column->lines->assign({column->header});
        column->list.linesChanged();
    }
}

void SequenceLists::restart() {
    clearAnswers();
    numbers_->texts.clear();
    pointTo(arrowAtLine_ ? LineNumbers::nowhere : 1);
}

void SequenceLists::showPlayed(int line) {
    pointTo(arrowAtLine_ ? line : line + 1);
}

void SequenceLists::goBack(int from, const std::string& text, int to) {
    if (!arrowAtLine_)
        return;
    numbers_->texts[static_cast<std::size_t>(from)] = text;
    const int before = to - 1; // a blank precedes its digits
    numbers_->texts[static_cast<std::size_t>(before)] =
        fmt::format("{} {}", before < 10 ? " " : "", before);
    List1.linesChanged();
}

void SequenceLists::pointTo(int row) {
    numbers_->arrow = row;
    List1.linesChanged();
}

void SequenceLists::addAnswer(const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < answers_.size(); ++i) {
        answers_[i]->lines->add(i < texts.size() ? texts[i] : std::string());
        answers_[i]->list.linesChanged();
    }
}

void SequenceLists::removeAnswers(int from, int to) {
    const auto first = static_cast<std::size_t>(from);
    for (const auto& column : answers_) {
        const std::size_t end = std::min(static_cast<std::size_t>(to) + 1, column->lines->size());
        if (first >= end)
            continue;
        column->lines->remove(first, end - first);
        column->list.linesChanged();
    }
}

} // namespace bitlux
