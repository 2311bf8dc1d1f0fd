#include "panels/zt72518/sequence_lists.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux::zt72518 {

/// Numbers from 0 on, an arrow behind one of them; as many as are prepared, or as the arrow needs.
class SequenceLists::LineNumbers : public forms::LineSource {
public:
    int arrow = 1;

    [[nodiscard]] std::size_t size() const override {
        constexpr std::size_t prepared = 42;
        return std::max(prepared, static_cast<std::size_t>(arrow) + 1);
    }
    [[nodiscard]] std::string line(std::size_t index) const override {
        return fmt::format("{}{}{}", index < 10 ? "  " : "", index,
                           index == static_cast<std::size_t>(arrow) ? "  ---->" : "");
    }
};

SequenceLists::SequenceLists(forms::Form& form)
    : numbers_(std::make_shared<LineNumbers>()),
      List_Commands(form, "List_Commands", commands_),
      List_Value(form, "List_Value", values_),
      List_Val_read1(form, "List_Val_read1", highBytes_),
      List_Val_read0(form, "List_Val_read0", lowBytes_),
      List1(form, "List1", numbers_) {
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
    List_Commands.linesChanged();
    List_Value.linesChanged();
}

void SequenceLists::move(int from, int to) {
    const std::string movedCommand = command(from);
    const std::string movedValue = value(from);
    remove(from);
    insert(to, movedCommand, movedValue);
    List_Commands.linesChanged(to);
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

void SequenceLists::clear() {
    assign({.commands = {commandHeader}, .values = {valueHeader}});
    pointTo(1);
}

void SequenceLists::clearAnswers() {
    highBytes_->assign({"MSB in binary (hexa)"});
    lowBytes_->assign({"LSB in binary (hexa)"});
    List_Val_read1.linesChanged();
    List_Val_read0.linesChanged();
}

void SequenceLists::restart() {
    clearAnswers();
    pointTo(1);
}

void SequenceLists::pointTo(int row) {
    numbers_->arrow = row;
    List1.linesChanged();
}

void SequenceLists::addAnswer(const std::string& high, const std::string& low) {
    highBytes_->add(high);
    lowBytes_->add(low);
    List_Val_read1.linesChanged();
    List_Val_read0.linesChanged();
}

void SequenceLists::removeAnswers(int from, int to) {
    const auto first = static_cast<std::size_t>(from);
    const std::size_t end = std::min(static_cast<std::size_t>(to) + 1, highBytes_->size());
    if (first >= end)
        return;
    highBytes_->remove(first, end - first);
    lowBytes_->remove(first, end - first);
    List_Val_read1.linesChanged();
    List_Val_read0.linesChanged();
}

} // namespace bitlux::zt72518
