#include "support/test_bench.h"

#include "platform/failure.h"

#include <fstream>
#include <iterator>
#include <memory>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

std::vector<Reply> parsed(const std::vector<std::string>& replies) {
    std::vector<Reply> result;
    for (const std::string& reply : replies)
        result.push_back(replyFromHex(reply));
    return result;
}

WireTrace recorded(TestBench& bench, const std::function<void()>& action) {
    WireTrace trace;
    bench.program.startRecording(trace);
    // Also when the action fails, since the trace goes then.
    const std::shared_ptr<void> recording(nullptr, [&](void*) { bench.program.stopRecording(); });
    action();
    return trace;
}

} // namespace

TestBench::TestBench(const std::string& device, const std::vector<std::string>& replies,
                     WithDongle withDongle, const std::string& commandLine)
    : bench(clock, makeDevice(device, parsed(replies))), program(bench.hardware(), desk.desk()) {
    if (withDongle == WithDongle::Yes)
        bench.dongle.plug();
    bench.wireFor(program.session());
    program.Main(commandLine);
}

void TestBench::configure(const std::string& bits, const std::vector<std::string>& options) {
    choose("frmMain.itemPortOptions");
    click("frmConfigureSPI.Btn_ParallelPort");
    get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength").edit(bits);
    for (const std::string& option : options)
        get<forms::OptionButton>("frmConfigureSPI." + option).click();
    click("frmConfigureSPI.cmdApply");
    program.dialog().setVisible(false);
}

void TestBench::send(const std::string& word) {
    edit("frmMain.txtHexWordToSend", word);
    click("frmMain.cmdSendOnce");
}

void TestBench::save(const std::string& name, const std::string& word) {
    edit("frmMain.txtHexWordToSend", word);
    get<forms::ComboBox>("frmMain.cmbMasterQCList").edit(name);
    click("frmMain.cmdSaveQC");
}

void TestBench::enablePin(const std::string& kind, int row, const std::string& number,
                          const std::string& name) {
    const auto control = [&](const char* prefix, const char* suffix) {
        return fmt::format("frmConfigureSPI.{}{}Pin{}({})", prefix, kind, suffix, row);
    };
    get<forms::CheckBox>(control("chk", "Enable")).setValue(1);
    if (!name.empty())
        get<forms::TextBox>(control("txt", "Name")).setText(name);
    if (!number.empty())
        get<forms::ComboBox>(control("cmb", "Assignment")).setText(number);
}

std::vector<std::string> TestBench::lines(const std::string& list) {
    const auto& box = get<forms::ListBox>(list);
    std::vector<std::string> result;
    for (std::size_t i = 0; i < box.count(); ++i)
        result.push_back(box.line(i));
    return result;
}

std::string accessesOf(TestBench& bench, const std::function<void()>& action) {
    const WireTrace trace = recorded(bench, action);
    std::vector<std::string> accesses;
    for (const WireAccess& access : trace.accesses())
        accesses.push_back(fmt::format("{}{:02X}", access.kind == WireAccess::Kind::Read ? "R" : "",
                                       access.value));
    return fmt::format("{}", fmt::join(accesses, " "));
}

std::vector<std::string> traceOf(TestBench& bench, const std::function<void()>& action,
                                 Times times) {
    const WireTrace trace = recorded(bench, action);
    std::vector<std::string> lines;
    for (const WireAccess& access : trace.accesses()) {
        const std::string line = trace.line(access);
        lines.push_back(times == Times::Yes ? line : line.substr(line.find(' ') + 1));
    }
    return lines;
}

std::string failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.what();
    }
    ADD_FAILURE() << "no failure";
    return {};
}

std::string repeated(std::size_t count, char character) {
    return std::string(count, character);
}

std::string contentOf(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace bitlux::test
