#pragma once

#include "apps/output_options.h"
#include "program/program.h"
#include "transfer/wire_trace.h"

#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace bitlux {

/// The trace of the words as lines.
class TraceOutput {
public:
    /// `name` may be "-" for `output`, which outlives this. A file that cannot be written raises
    /// Failure (File).
    TraceOutput(const std::string& name, std::ostream& output);

    /// What was recorded and is not yet written.
    [[nodiscard]] WireTrace& trace() { return trace_; }
    /// Writes it. Raises Failure (File) when the disk is full.
    void write();

private:
    std::string name_;
    std::ofstream file_;
    std::ostream& stream_;
    WireTrace trace_;
};

/// The outputs of a command beside its lines: the trace, the file of the log and the journal,
/// written after each word, and the others, written at the end. The outputs are independent: a
/// failed one is reported, and the others are written.
class CommandOutputs {
public:
    /// All outlive this.
    CommandOutputs(const OutputOptions& options, std::ostream& output, std::ostream& errors)
        : options_(options), output_(output), errors_(errors) {}

    /// Raises Failure (File) when a file cannot be written.
    void open();
    /// Starts recording, as far as the outputs require it.
    void begin(Program& program);
    /// Stops recording.
    void stop(Program& program);
    /// Writes all outputs; false when one failed, now or before.
    bool save(Program& program);

private:
    void attempt(const std::function<void()>& write);
    void beginLog(LogFile& file);
    void beginJournal(JournalRecording& journal);
    void writeTrace(Program& program);
    void saveVcd(Program& program);
    void saveSr(Program& program);
    void printLog(Program& program);

    const OutputOptions& options_;
    std::ostream& output_;
    std::ostream& errors_;
    std::optional<TraceOutput> trace_; ///< until it has failed
    Subscription transferred_;
    Subscription logFailed_;
    std::unique_ptr<GrowingFile> journal_; ///< until it is recorded into
    Subscription journalFailed_;
    bool good_ = true;
};

} // namespace bitlux
