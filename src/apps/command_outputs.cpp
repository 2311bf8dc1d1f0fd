#include "apps/command_outputs.h"

#include "apps/output_failure.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

constexpr const char* here = "-"; ///< the standard output, as the name of a file

[[noreturn]] void fail(const std::string& fileName, const char* reason) {
    throw Failure(Failure::Kind::File,
                  fmt::format("The file \"{}\" cannot be written: {}.", fileName, reason));
}

bool mayWrite(const fs::path& path, int mode) {
    return ::faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
}

/// Finds, before anything is sent, what would prevent a file from being saved afterwards.
void demandWritable(const std::string& fileName) {
    if (fileName.empty() || fileName == here)
        return;
    std::error_code error;
    const fs::file_status status = fs::status(fileName, error);
    if (fs::is_directory(status))
        fail(fileName, std::strerror(EISDIR));
    if (fs::exists(status)) {
        if (!fs::is_regular_file(status))
            fail(fileName, "it is a device");
        if (!mayWrite(fileName, W_OK))
            fail(fileName, std::strerror(errno));
        return;
    }
    const fs::path folder = fs::path(fileName).parent_path();
    if (!mayWrite(folder.empty() ? "." : folder, W_OK | X_OK))
        fail(fileName, std::strerror(errno));
}

} // namespace

TraceOutput::TraceOutput(const std::string& name, std::ostream& output)
    : name_(name), stream_(name == here ? output : file_) {
    if (name == here)
        return;
    file_.open(name);
    if (!file_)
        fail(name, std::strerror(errno));
}

void TraceOutput::write() {
    errno = 0;
    for (const WireAccess& access : trace_.accesses())
        stream_ << trace_.line(access) << '\n';
    trace_.clear();
    if (stream_.flush())
        return;
    if (name_ == here)
        failOutput();
    fail(name_, errno == 0 ? "no reason is known" : std::strerror(errno));
}

void CommandOutputs::open() {
    for (const std::string* fileName : {&options_.log, &options_.vcd, &options_.sr})
        demandWritable(*fileName);
    if (!options_.trace.empty())
        trace_.emplace(options_.trace, output_);
    if (!options_.journal.empty())
        journal_ = std::make_unique<GrowingFile>(options_.journal);
}

void CommandOutputs::begin(Program& program) {
    if (trace_) {
        program.startRecording(trace_->trace());
        transferred_ =
            program.engine().wordTransferred.follow([this, &program] { writeTrace(program); });
    }
    if (!options_.vcd.empty() || !options_.sr.empty())
        program.waveform().start();
    if (!options_.log.empty() && options_.log != here)
        beginLog(program.mainForm().log.file);
    if (journal_)
        beginJournal(program.journal());
}

void CommandOutputs::beginJournal(JournalRecording& journal) {
    journalFailed_ = journal.failed.follow([this, &journal] {
        fmt::print(errors_, "{} The journal ends there.\n", journal.failure());
        good_ = false;
    });
    attempt([&] { journal.start(std::move(journal_)); });
}

/// Sending continues when the file cannot be written any more.
void CommandOutputs::beginLog(LogFile& file) {
    logFailed_ = file.failed.follow([this, &file] {
        fmt::print(errors_, "{}; the log ends there.\n", file.failure());
        good_ = false;
    });
    attempt([&] { file.begin(options_.log); });
}

void CommandOutputs::writeTrace(Program& program) {
    attempt([this] { trace_->write(); });
    if (good_)
        return;
    program.stopRecording();
    transferred_.reset();
    trace_.reset();
}

void CommandOutputs::stop(Program& program) {
    transferred_.reset();
    program.stopRecording();
    program.waveform().stop();
    program.journal().stop();
}

bool CommandOutputs::save(Program& program) {
    if (trace_)
        writeTrace(program);
    attempt([&] { saveVcd(program); });
    attempt([&] { saveSr(program); });
    printLog(program);
    return good_;
}

void CommandOutputs::saveVcd(Program& program) {
    const WaveformRecording& waveform = program.waveform();
    const std::size_t kept = waveform.words().size();
    if (kept < waveform.count())
        fmt::print(errors_, "The waveform holds the last {} of {} words.\n", kept,
                   waveform.count());
    if (kept > 0 && !options_.vcd.empty())
        program.saveVcd(options_.vcd);
}

void CommandOutputs::saveSr(Program& program) {
    const std::size_t kept = program.waveform().words().size();
    if (kept == 0 || options_.sr.empty())
        return;
    const SampledWords saved = program.saveSr(options_.sr);
    if (saved.words < kept)
        fmt::print(errors_, "The file \"{}\" holds the last {} of {} words.\n", options_.sr,
                   saved.words, kept);
    if (!saved.exact)
        fmt::print(errors_, "The file \"{}\" has a sample every {} ns.\n", options_.sr, saved.tick);
}

void CommandOutputs::printLog(Program& program) {
    program.mainForm().log.file.end();
    if (options_.log != here)
        return;
    const LogLines& lines = program.mainForm().log.lines();
    for (std::size_t i = 0; i < lines.size(); ++i)
        output_ << printable(lines.line(i), std::numeric_limits<std::size_t>::max()) << '\n';
}

void CommandOutputs::attempt(const std::function<void()>& write) {
    try {
        write();
    } catch (const Failure& failure) {
        fmt::print(errors_, "{}\n", failure.what());
        good_ = false;
    }
}

} // namespace bitlux
