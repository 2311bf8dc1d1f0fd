#pragma once

#include "bench/bench_clock.h"
#include "bench/scripted_desk.h"
#include "platform/forms/controls.h"
#include "program/program.h"
#include "support/rows.h"
#include "support/temporary_folder.h"
#include "workbench/virtual_bench.h"

#include <string>
#include <vector>

namespace bitlux::test {

using Texts = std::vector<std::string>;

inline constexpr const char* checkTheCable = "Check the USB cable and restart program";

/// The program on the virtual bench, used through its forms by control names.
class TestBench {
public:
    enum class WithDongle { No, Yes };

    explicit TestBench(const std::string& device = "loopback",
                       const std::vector<std::string>& replies = {},
                       WithDongle withDongle = WithDongle::No, const std::string& commandLine = {});

    /// Opens the dialog, sets up the port, types the word length, and applies.
    void configure(const std::string& bits, const std::vector<std::string>& options = {"optHex"});

    template <typename T>
    T& get(const std::string& name) {
        return program.forms().get<T>(name);
    }
    void click(const std::string& button) { get<forms::Button>(button).click(); }
    void choose(const std::string& item) { get<forms::MenuItem>(item).click(); }
    void edit(const std::string& textBox, const std::string& text) {
        get<forms::TextBox>(textBox).edit(text);
    }
    std::string text(const std::string& textBox) { return get<forms::TextBox>(textBox).text(); }
    std::string label(const std::string& name) { return get<forms::Label>(name).caption(); }
    /// Types a word and sends it once.
    void send(const std::string& word);

    /// Saves a Quick Command: types word and name, and saves.
    void save(const std::string& name, const std::string& word = "A5");
    /// Gives the row of a data pin in the dialog, or of a control pin, its pin and a name.
    void enablePin(const std::string& kind, int row, const std::string& number,
                   const std::string& name = {});
    /// What the status line shows.
    std::string notice() {
        return std::get<std::string>(program.mainForm().readVariable("StatusNotice"));
    }

    /// All lines of a list.
    std::vector<std::string> lines(const std::string& list);
    std::vector<std::string> log() { return lines("frmMain.lstSessionLogSingle"); }

    [[nodiscard]] Session& session() { return program.session(); }

    VirtualClock clock;
    VirtualBench bench;
    ScriptedDesk desk{clock};
    Program program;

    SimulatedPort& port = bench.port;
    SimulatedDongle& dongle = bench.dongle; ///< plugged in before the start, or not at all
    ScriptedBoxes& boxes = desk.boxes;
    ScriptedFileDialogs& fileDialogs = desk.fileDialogs;
    QuietPointer& pointer = desk.pointer;
    ScriptedLoop& loop = desk.loop;
};

/// The accesses that `action` makes, as "00 06 R.. 01": a write as its byte, a read as R and its
/// byte.
std::string accessesOf(TestBench& bench, const std::function<void()>& action);

/// The accesses that `action` makes as the lines of a trace, each after its time, if that is
/// asked for.
enum class Times { No, Yes };
std::vector<std::string> traceOf(TestBench& bench, const std::function<void()>& action,
                                 Times times = Times::Yes);

/// The text of the failure that `action` ends in; a test failure when it ends in none.
std::string failureOf(const std::function<void()>& action);

/// As many times the same character.
std::string repeated(std::size_t count, char character);

/// The whole content of a file.
std::string contentOf(const std::string& fileName);

} // namespace bitlux::test
