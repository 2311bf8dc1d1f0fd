#include "sending/command_lists.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

/// The items of a combo box as the lines of a list.
class ItemLines : public forms::LineSource {
public:
    explicit ItemLines(const forms::ComboBox& box) : box_(box) {}
    [[nodiscard]] std::size_t size() const override { return box_.items().size(); }
    [[nodiscard]] std::string line(std::size_t index) const override { return box_.items()[index]; }

private:
    const forms::ComboBox& box_;
};

} // namespace

CommandLists::CommandLists(forms::Form& form, MessageBoxes& boxes)
    : boxes_(boxes),
      cmbMasterQCList(form, "cmbMasterQCList", forms::ComboBox::Style::Editable),
      lstCommandsAvailable(form, "lstCommandsAvailable",
                           std::make_shared<ItemLines>(cmbMasterQCList)),
      lstCommandsToSend(form, "lstCommandsToSend", toSend_) {}

bool CommandLists::hasCommands() {
    if (lstCommandsToSend.count() > 0)
        return true;
    boxes_.show({.text = "Nothing to send."});
    return false;
}

void CommandLists::addToSend(const std::string& line) {
    toSend_->add(line);
    lstCommandsToSend.linesChanged();
}

void CommandLists::setToSend(std::vector<std::string> lines) {
    lstCommandsToSend.setListIndex(-1);
    toSend_->assign(std::move(lines));
    lstCommandsToSend.linesChanged();
}

void CommandLists::removeToSend(std::size_t index) {
    const int selected = lstCommandsToSend.listIndex();
    const int removed = static_cast<int>(index);
    if (selected >= removed)
        lstCommandsToSend.setListIndex(selected == removed ? -1 : selected - 1);
    toSend_->remove(index);
    lstCommandsToSend.linesChanged();
}

void CommandLists::removeAllToSend(const std::string& text) {
    const std::vector<std::string>& lines = toSend();
    int selected = lstCommandsToSend.listIndex();
    if (selected >= 0) {
        const auto line = lines.begin() + selected;
        selected =
            *line == text ? -1 : selected - static_cast<int>(std::count(lines.begin(), line, text));
    }
    lstCommandsToSend.setListIndex(-1);
    toSend_->removeAll(text);
    lstCommandsToSend.linesChanged();
    lstCommandsToSend.setListIndex(selected);
}

void CommandLists::moveSelectedToSend(int to) {
    toSend_->swap(static_cast<std::size_t>(lstCommandsToSend.listIndex()),
                  static_cast<std::size_t>(to));
    lstCommandsToSend.linesChanged();
    lstCommandsToSend.setListIndex(to);
}

void CommandLists::setNames(std::vector<std::string> names) {
    cmbMasterQCList.setItems(std::move(names));
    lstCommandsAvailable.linesChanged();
    lstCommandsAvailable.setListIndex(-1);
}

void CommandLists::addName(std::string name) {
    cmbMasterQCList.addItem(std::move(name));
    lstCommandsAvailable.linesChanged();
}

void CommandLists::clear() {
    setNames({});
    setToSend({});
}

} // namespace bitlux
