#include "sending/log_file.h"

#include "platform/failure.h"

#include <utility>

namespace bitlux {

namespace {

constexpr const char* startCaption = "Log to &File...";

} // namespace

LogFile::LogFile(forms::Form& form, const Desk& desk)
    : desk_(desk), itemLogToFile(form, "itemLogToFile", startCaption) {
    form.procedure("itemLogToFile_Click", [this] { itemLogToFile_Click(); });
}

void LogFile::begin(const std::string& fileName) {
    end();
    file_.emplace(fileName);
    showItem();
}

void LogFile::end() {
    file_.reset();
    failure_.clear();
    showItem();
}

void LogFile::itemLogToFile_Click() {
    if (isOn()) {
        end();
        return;
    }
    failure_.clear();
    const std::optional<std::string> name =
        desk_.fileDialogs.ask({.kind = FileDialog::Kind::Save,
                               .title = "Log to File",
                               .filter = "Text Files (*.txt)|*.txt|All Files (*.*)|*.*",
                               .fileName = {}});
    if (name && !name->empty())
        begin(*name);
}

void LogFile::write() {
    try {
        file_->add(text_);
    } catch (const Failure& failure) {
        file_.reset();
        failure_ = failure.what();
        if (failure_.ends_with('.'))
            failure_.pop_back();
        showItem();
        failed.raise();
    }
}

void LogFile::showItem() {
    itemLogToFile.setCaption(isOn() ? "Stop Logging to &File" : startCaption);
}

} // namespace bitlux
