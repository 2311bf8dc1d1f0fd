#include "program/unsaved_work.h"

#include "platform/failure.h"
#include "platform/printable.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include <fmt/format.h>

namespace bitlux {

UnsavedWork::UnsavedWork(forms::Form& form, const Parts& parts)
    : parts_(parts), timer_keep(form, "timer_keep", interval) {
    form.procedure("timer_keep_Timer", [this] { keep(); });
    form.procedure("OpenRecovered", [this] { openLeft(); });
    parts_.files.replacing.subscribe([this] { giveUp(); });
    parts_.files.fileUsed.subscribe([this] { fileUsed(); });
}

void UnsavedWork::compareFromNow() {
    compares_ = true;
    saved_ = present();
    std::error_code error; // a later program may run in another folder
    fileInUse_ = std::filesystem::absolute(parts_.session.ConfigFileName, error).string();
}

bool UnsavedWork::differs() {
    if (compares_ && parts_.run.state() == RunControls::State::Idle)
        differed_ = !saved_ || present() != saved_;
    return differed_;
}

bool UnsavedWork::isLarge() const {
    constexpr std::size_t most = 5000; // half a millisecond
    std::size_t records = parts_.session.QuickCommandTable.rows() + parts_.commands.toSend().size();
    for (int n = 1; n < parts_.session.BatchCount(); ++n)
        records += parts_.session.lstBatchList(n).size();
    return records > most;
}

std::optional<UnsavedWork::Hash> UnsavedWork::present() const {
    try {
        return std::hash<std::string_view>{}(parts_.files.text());
    } catch (const Failure&) { // a text that no file can hold is in none
        return std::nullopt;
    }
}

void UnsavedWork::keepIn(const std::string& folder) {
    tryOut([&] { store_.emplace(folder); });
    if (!store_)
        return;
    left_ = store_->left();
    timer_keep.enable();
}

void UnsavedWork::keep() {
    if (!store_)
        return;
    if (saved_ && present() == saved_) {
        store_->dropDraft();
        kept_.reset();
        problem_.clear();
        return;
    }
    tryOut([this] {
        const std::string text = parts_.files.text();
        const Hash hash = std::hash<std::string_view>{}(text);
        if (kept_ == hash)
            return;
        store_->keepDraft(text, origin());
        kept_ = hash;
    });
}

std::string UnsavedWork::origin() const {
    if (const std::optional<std::string>& from = parts_.files.recoveredFrom())
        return *from;
    // A file that was read in part is none that the work belongs to.
    return parts_.session.ConfigFileName.empty() ? std::string() : fileInUse_;
}

void UnsavedWork::giveUp() {
    keep();
    if (store_)
        store_->giveUpDraft();
}

void UnsavedWork::fileUsed() {
    if (!compares_)
        return;
    left_.reset();
    compareFromNow();
    kept_.reset();
    if (parts_.files.recoveredFrom())
        saved_.reset();
    if (store_)
        store_->dropDraft();
}

void UnsavedWork::end(bool wasAsked) {
    timer_keep.disable();
    if (wasAsked)
        giveUp();
    else
        keep();
    if (store_ && !wasAsked && store_->hasDraft())
        store_->leaveDraft();
    store_.reset();
}

std::vector<RecoveredFile> UnsavedWork::recovered() const {
    return store_ ? store_->list() : std::vector<RecoveredFile>();
}

void UnsavedWork::open(const RecoveredFile& file) {
    parts_.files.open(file.fileName);
    if (store_ && !saved_ && store_->adopt(file.fileName))
        kept_ = present();
}

void UnsavedWork::openLeft() {
    if (left_)
        open(RecoveredFile(*left_)); // which resets it
}

std::optional<Notice> UnsavedWork::notice() const {
    constexpr std::size_t longestName = 40;
    if (!problem_.empty())
        return Notice{.text = fmt::format("Unsaved changes are not kept: {}", problem_)};
    if (!left_)
        return {};
    const std::string name = std::filesystem::path(left_->origin).filename().string();
    return Notice{.text = name.empty() ? std::string("Unsaved changes were recovered")
                                       : fmt::format("Unsaved changes of \"{}\" were recovered",
                                                     printable(name, longestName)),
                  .button = "Open",
                  .procedure = "OpenRecovered"};
}

void UnsavedWork::tryOut(const std::function<void()>& action) {
    try {
        action();
        problem_.clear();
    } catch (const Failure& failure) {
        problem_ = failure.what();
        if (problem_.ends_with('.'))
            problem_.pop_back();
    }
}

} // namespace bitlux
