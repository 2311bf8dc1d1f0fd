#include "program/word_settings.h"

#include "platform/failure.h"

#include <fmt/format.h>

namespace bitlux {

namespace {

void choose(const std::optional<bool>& first, forms::OptionButton& yes, forms::OptionButton& no) {
    if (first)
        (*first ? yes : no).setValue(true);
}

void choosePins(ConfigureDialog& dialog, const std::array<std::string, 4>& pins) {
    dialog.cmbCS.setText(pins[0]);
    dialog.cmbDI.setText(pins[1]);
    dialog.cmbCLK.setText(pins[2]);
    dialog.cmbDO.setText(pins[3]);
}

void useDongle(Program& program, const std::function<std::string()>& refusal) {
    forms::CheckBox& box = program.dialog().ChkSerialPort;
    if (program.session().USBReady && !box.checked())
        box.setValue(1);
    if (program.engine().usesDongle())
        return;
    const std::string reason = refusal();
    throw Failure(Failure::Kind::LinkFailed,
                  reason.empty()
                      ? "There is no dongle that could be opened; \"bitlux doctor\" tells why."
                      : reason);
}

bool usePort(Program& program) {
    ConfigureDialog& dialog = program.dialog();
    if (dialog.ChkSerialPort.checked())
        dialog.ChkSerialPort.setValue(0);
    dialog.Btn_ParallelPort_Click();
    if (dialog.adapters.chosen() != nullptr)
        throw Failure(Failure::Kind::PortUnusable,
                      "There is no parallel port. An adapter is used only when it is asked for: "
                      "as the bus ftdi.");
    return program.session().ParallelPortReady;
}

void useAdapter(Program& program) {
    ConfigureDialog& dialog = program.dialog();
    dialog.listAdapters();
    if (program.adapters().found().empty())
        throw Failure(Failure::Kind::PortUnusable,
                      "There is no adapter; \"bitlux doctor\" tells what is missing.");
    if (dialog.ChkSerialPort.checked())
        dialog.ChkSerialPort.setValue(0);
    const std::string name = program.adapters().found().front().name();
    dialog.adapters.insteadOfFiles = name;
    dialog.adapters.select(name);
}

} // namespace

bool chooseBus(Program& program, std::optional<Bus> bus,
               const std::function<std::string()>& refusal) {
    if (bus == Bus::Adapter) {
        useAdapter(program);
        return true;
    }
    if (bus == Bus::Port || (!bus && !program.engine().usesDongle()))
        return usePort(program);
    useDongle(program, refusal);
    return true;
}

void applyWordSettings(Program& program, const WordSettings& settings) {
    ConfigureDialog& dialog = program.dialog();
    if (settings.bits)
        dialog.cmbSPIWordLength.setText(fmt::format("{}", *settings.bits));
    dialog.optHex.setValue(true);
    choose(settings.msbFirst, dialog.optMSBfirst, dialog.optLSBfirst);
    choose(settings.csHigh, dialog.optCSpositive, dialog.optCSnegative);
    choose(settings.diHigh, dialog.optDIpolarity_pos, dialog.optDIpolarity_neg);
    choose(settings.doHigh, dialog.optDOpolarity_pos, dialog.optDOpolarity_neg);
    if (settings.type) {
        dialog.types.TabStripSPItype.setSelected(*settings.type);
        dialog.types.TabStripSPItype_Click();
    }
    if (settings.clock)
        dialog.SPIBaudRate(*settings.clock).setValue(true);
    if (settings.pins) {
        choosePins(dialog, *settings.pins);
        dialog.setVisible(true); // a hidden dialog takes pins that are in each other's way
    }
    dialog.cmdApply_Click();
    dialog.setVisible(false);
}

} // namespace bitlux
