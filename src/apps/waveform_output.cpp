#include "apps/waveform_output.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

void addWaveformOptions(CLI::App& command, WaveformOptions& options) {
    command
        .add_option("--vcd", options.vcd, "Save the waveform of the words as a value change dump")
        ->type_name("FILE");
    command.add_option("--sr", options.sr, "Save it as a sigrok session")->type_name("FILE");
}

void saveWaveform(Program& program, const WaveformOptions& options, std::ostream& errors) {
    WaveformRecording& waveform = program.waveform();
    waveform.stop();
    const std::size_t kept = waveform.words().size();
    if (kept == 0)
        return;
    if (kept < waveform.count())
        fmt::print(errors, "The waveform holds the last {} of {} words.\n", kept, waveform.count());
    if (!options.vcd.empty())
        program.saveVcd(options.vcd);
    if (options.sr.empty())
        return;
    const SampledWords saved = program.saveSr(options.sr);
    if (saved.words < kept)
        fmt::print(errors, "The file \"{}\" holds the last {} of {} words.\n", options.sr,
                   saved.words, kept);
    if (!saved.exact)
        fmt::print(errors, "The file \"{}\" has a sample every {} ns.\n", options.sr, saved.tick);
}

} // namespace bitlux
