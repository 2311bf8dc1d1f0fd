#include "apps/send_command.h"

#include "apps/terminal_desk.h"
#include "bench/scripted_desk.h"
#include "platform/failure.h"
#include "platform/printable.h"
#include "program/program.h"
#include "sending/word_text.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

/// One run of the command: the program, and where its results go.
class SendRun {
public:
    SendRun(const SendOptions& options, std::ostream& output, std::ostream& errors)
        : options_(options),
          output_(output),
          errors_(errors),
          boxes_(errors),
          fileName_(options.log),
          outlet_(options.outlet, uninterrupted(), errors),
          program_(outlet_.hardware(), {.boxes = boxes_,
                                        .fileDialogs = fileName_,
                                        .pointer = pointer_,
                                        .loop = outlet_.loop()}) {
        outlet_.wireFor(program_.session());
        openTrace();
    }

    bool run() {
        program_.Main();
        bool good = configure();
        if (good && traceOutput_ != nullptr)
            program_.startRecording(trace_);
        if (good && options_.waveform.any())
            program_.waveform().start();
        for (std::size_t i = 0; good && i < options_.words.size(); ++i)
            good = send(options_.words[i]);
        program_.stopRecording();
        saveWaveform(program_, options_.waveform, errors_);
        return saveLog() && good;
    }

private:
    [[nodiscard]] forms::FormSet& forms() { return program_.forms(); }
    void choose(const std::string& optionButton) {
        forms().get<forms::OptionButton>("frmConfigureSPI." + optionButton).click();
    }
    void choosePin(const std::string& combo, const std::string& pin) {
        forms().get<forms::ComboBox>("frmConfigureSPI." + combo).edit(pin);
    }

    bool configure();
    bool chooseBus();
    bool send(const std::string& word);
    void openTrace();
    void writeTrace();
    bool saveLog();

    const SendOptions& options_;
    std::ostream& output_;
    std::ostream& errors_;
    TerminalBoxes boxes_;
    GivenFileName fileName_;
    QuietPointer pointer_;
    Outlet outlet_;
    Program program_;
    WireTrace trace_;
    std::ofstream traceFile_;
    std::ostream* traceOutput_ = nullptr;
};

bool SendRun::configure() {
    forms().get<forms::MenuItem>("frmMain.itemPortOptions").click();
    if (!chooseBus())
        return false;
    forms()
        .get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength")
        .edit(fmt::format("{}", options_.bits));
    choose("optHex");
    choose(options_.order == "lsb" ? "optLSBfirst" : "optMSBfirst");
    choose(options_.cs == "high" ? "optCSpositive" : "optCSnegative");
    choose(options_.di == "low" ? "optDIpolarity_neg" : "optDIpolarity_pos");
    choose(options_.dataOut == "low" ? "optDOpolarity_neg" : "optDOpolarity_pos");
    forms().get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").click(options_.type);
    if (program_.engine().usesDongle()) {
        choose(fmt::format("SPIBaudRate({})", options_.clock));
    } else {
        const std::vector<std::string> pins = splitAtCommas(options_.pins);
        choosePin("cmbCS", pins.at(0));
        choosePin("cmbDI", pins.at(1));
        choosePin("cmbCLK", pins.at(2));
        choosePin("cmbDO", pins.at(3));
    }
    forms().get<forms::Button>("frmConfigureSPI.cmdApply").click();
    forms().form("frmConfigureSPI").setVisible(false);
    program_.engine().requireCarriedLength();
    return !boxes_.shown();
}

bool SendRun::chooseBus() {
    auto& dongle = forms().get<forms::CheckBox>("frmConfigureSPI.ChkSerialPort");
    if (options_.outlet.bus == "port" && dongle.checked())
        dongle.click();
    if (program_.engine().usesDongle())
        return true;
    if (options_.outlet.bus == "dongle")
        throw Failure(Failure::Kind::PortUnusable,
                      "There is no dongle that could be opened; \"bitlux doctor\" tells why.");
    forms().get<forms::Button>("frmConfigureSPI.Btn_ParallelPort").click();
    return !boxes_.shown();
}

bool SendRun::send(const std::string& word) {
    forms().get<forms::TextBox>("frmMain.txtHexWordToSend").edit(word);
    forms().get<forms::Button>("frmMain.cmdSendOnce").click();
    writeTrace();
    if (boxes_.shown())
        return false;
    const Session& session = program_.session();
    const auto length = static_cast<std::size_t>(session.SPIWordLength);
    fmt::print(output_, "{} {}\n", hexText(WordBits(session.WordToSend).first(length)),
               hexText(session.WordReceived));
    return true;
}

void SendRun::openTrace() {
    if (options_.trace == "-") {
        traceOutput_ = &output_;
    } else if (!options_.trace.empty()) {
        traceFile_.open(options_.trace);
        if (!traceFile_)
            throw Failure(Failure::Kind::File, fmt::format("The file \"{}\" cannot be written: {}.",
                                                           options_.trace, std::strerror(errno)));
        traceOutput_ = &traceFile_;
    }
}

void SendRun::writeTrace() {
    if (traceOutput_ == nullptr)
        return;
    errno = 0;
    for (const WireAccess& access : trace_.accesses())
        *traceOutput_ << trace_.line(access) << '\n';
    trace_.clear();
    if (!traceOutput_->flush())
        throw Failure(Failure::Kind::File, fmt::format("The file \"{}\" cannot be written: {}.",
                                                       options_.trace, std::strerror(errno)));
}

bool SendRun::saveLog() {
    if (options_.log == "-") {
        const LogLines& lines = program_.mainForm().log.lines();
        for (std::size_t i = 0; i < lines.size(); ++i)
            output_ << printable(lines.line(i)) << '\n';
    } else if (!options_.log.empty()) {
        forms().get<forms::Button>("frmMain.cmdSaveLogSingle").click();
    }
    return !boxes_.shown();
}

CLI::Validator fourPins() {
    return {[](const std::string& text) -> std::string {
                constexpr std::string_view dataOutPins = ",7,12,13,15,";
                constexpr std::string_view otherPins = ",2,3,4,5,6,7,8,9,";
                const std::vector<std::string> pins = splitAtCommas(text);
                bool good = pins.size() == 4;
                for (std::size_t i = 0; good && i < pins.size(); ++i)
                    good = (i == 3 ? dataOutPins : otherPins).find("," + pins[i] + ",") !=
                           std::string_view::npos;
                return good ? "" : "CS, DI and CLK are pins 2 to 9, DO is 7, 12, 13 or 15";
            },
            "CS,DI,CLK,DO"};
}

} // namespace

CLI::App& addSendCommand(CLI::App& app, SendOptions& options) {
    CLI::App& send = *app.add_subcommand("send", "Send words and print the answers");
    const std::function<void()> checkOutlet = addOutletOptions(
        send, options.outlet,
        "Send through the dongle or the parallel port; without it through the dongle when there is "
        "one, on the virtual bench through the port");
    send.add_option("--bits", options.bits,
                    "Bits of a word, 1 to 160; through the dongle 8, 16, 24, 32 or 40")
        ->capture_default_str();
    send.add_option("--type", options.type, "SPI type")
        ->check(CLI::Range(1, 8))
        ->capture_default_str();
    send.add_option("--order", options.order, "Which bit goes first")
        ->check(CLI::IsMember({"msb", "lsb"}))
        ->capture_default_str();
    send.add_option("--cs", options.cs, "Level of chip select when asserted")
        ->check(CLI::IsMember({"low", "high"}))
        ->capture_default_str();
    send.add_option("--di", options.di, "Level of a one on data in")
        ->check(CLI::IsMember({"high", "low"}))
        ->capture_default_str();
    send.add_option("--do", options.dataOut, "Level of a one on data out")
        ->check(CLI::IsMember({"high", "low"}))
        ->capture_default_str();
    send.add_option("--pins", options.pins, "Pins of the connector")
        ->check(fourPins())
        ->capture_default_str();
    const std::map<std::string, int> clocks{{"4M", 0}, {"1M", 1}, {"500k", 2}, {"62.5k", 3}};
    send.add_option("--clock", options.clock, "Clock of the dongle in Hz (1M)")
        ->transform(CLI::Transformer(clocks).description("{4M,1M,500k,62.5k}"))
        ->check(CLI::IsMember({0, 1, 2, 3}).description(""));
    send.add_option("--trace", options.trace,
                    "Write every access or frame of the words, - for here")
        ->type_name("FILE|-");
    send.add_option("--log", options.log, "Save the Session Log, - to print it")
        ->type_name("FILE|-");
    addWaveformOptions(send, options.waveform);
    send.add_option("WORD", options.words, "Hexadecimal words")->required();
    send.final_callback(checkOutlet);
    return send;
}

int runSendCommand(const SendOptions& options, std::ostream& output, std::ostream& errors) {
    try {
        SendRun run(options, output, errors);
        return run.run() ? 0 : 1;
    } catch (const Failure& failure) {
        fmt::print(errors, "{}\n", failure.what());
        return 1;
    }
}

} // namespace bitlux
