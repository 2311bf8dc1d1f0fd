#include "config/configure_dialog.h"

#include "platform/forms/form_set.h"

#include <fmt/format.h>

namespace bitlux {

namespace {

using forms::ComboBox;

constexpr int baudStep = 64; // the code is in the two top bits of its byte
constexpr const char* rangeOnUsb = "(Anything between 1 and 40)";
constexpr const char* rangeOnPort = "(Anything between 1 and 160)";

std::vector<std::string> dataPins() {
    return {"2", "3", "4", "5", "6", "7", "8", "9"};
}

std::vector<forms::TabStrip::Tab> pageTabs() {
    return {{"General", "Configure general options such as the part name, LPT port, and number of "
                        "SPI bits"},
            {"SPI Pins", "Configure SPI pin assignments and polarities"},
            {"Extra Pins", "Use this tab to configure extra pins on the parallel port"},
            {"Session Log", "Change Session Log options"}};
}

forms::ControlArray<forms::OptionButton> baudRates(forms::Form& form, forms::OptionGroup& group) {
    return {"SPIBaudRate", 0, 3, [&](const std::string& name, int index) {
                constexpr std::array rates{"4 MHz", "1 MHz", "500 KHz", "62.5 KHz"};
                return std::make_unique<forms::OptionButton>(
                    form, group, name, rates.at(static_cast<std::size_t>(index)), index);
            }};
}

forms::ControlArray<forms::CheckBox> addressBoxes(forms::Form& form) {
    return {"chkHardCodeLPT", 0, 2, [&form](const std::string& name, int index) {
                constexpr std::array addresses{"0x3BC", "0x378", "0x278"};
                return std::make_unique<forms::CheckBox>(
                    form, name,
                    fmt::format("Always use {} (Not Recommended)",
                                addresses.at(static_cast<std::size_t>(index))),
                    index);
            }};
}

} // namespace

ConfigureDialog::ConfigureDialog(forms::FormSet& set, Parts parts)
    : Form(set, "frmConfigureSPI", "Configuration"),
      parts_(std::move(parts)),
      session_(parts_.session),
      TabStripConfig(*this, "TabStripConfig", pageTabs()),
      FrameConfig("FrameConfig", 1, 4,
                  [this](const std::string& name, int index) {
                      return std::make_unique<forms::Frame>(*this, name, "", index);
                  }),
      txtPartName(*this, "txtPartName"),
      cmbSPIWordLength(*this, "cmbSPIWordLength", ComboBox::Style::Editable,
                       {"40", "32", "24", "16", "8"}),
      lblSPIBitRange(*this, "lblSPIBitRange", rangeOnPort),
      optBinary(*this, displayGroup_, "optBinary", "Binary"),
      optHex(*this, displayGroup_, "optHex", "Hex"),
      ChkSerialPort(*this, "ChkSerialPort", "Use USB instead of Parallel Port"),
      Btn_ParallelPort(*this, "Btn_ParallelPort", "Setup Parallel Port"),
      lblPortDisabled(*this, "lblPortDisabled"),
      lblLPTaddress(*this, "lblLPTaddress", "Choose from the list below:  (Recommended)"),
      cmbPortsAvailable(*this, "cmbPortsAvailable", ComboBox::Style::List),
      adapters(parts_.adapterBus, cmbPortsAvailable),
      chkHardCodeLPT(addressBoxes(*this)),
      frameSPIBaudRate(*this, "frameSPIBaudRate", "Clock of the dongle"),
      SPIBaudRate(baudRates(*this, baudGroup_)),
      CheckEnable72361(*this, "CheckEnable72361", "Enable 72361 Tab"),
      CheckEnable72517(*this, "CheckEnable72517", "Enable 72517 Tab"),
      CheckEnable72518(*this, "CheckEnable72518", "Enable 72518 Tab"),
      CheckEnable72537(*this, "CheckEnable72537", "Enable 72537 Tab"),
      CheckEnable72516(*this, "CheckEnable72516", "Enable 72516 Tab"),
      lblSPIPinsDisabled(*this, "lblSPIPinsDisabled"),
      framePortPins(*this, "framePortPins", "Pins of the connector"),
      cmbCS(*this, "cmbCS", ComboBox::Style::List, dataPins()),
      cmbDI(*this, "cmbDI", ComboBox::Style::List, dataPins()),
      cmbCLK(*this, "cmbCLK", ComboBox::Style::List, dataPins()),
      cmbDO(*this, "cmbDO", ComboBox::Style::List, {"7", "12", "13", "15"}),
      frameSPIBitOrder(*this, "frameSPIBitOrder", "Bit order"),
      optMSBfirst(*this, orderGroup_, "optMSBfirst", "MSB is sent first"),
      optLSBfirst(*this, orderGroup_, "optLSBfirst", "LSB is sent first"),
      frameCS(*this, "frameCS", "Chip select"),
      optCSnegative(*this, csGroup_, "optCSnegative", "Low when asserted (CSB)"),
      optCSpositive(*this, csGroup_, "optCSpositive", "High when asserted (CS)"),
      frameDI(*this, "frameDI", "Data in"),
      optDIpolarity_pos(*this, diGroup_, "optDIpolarity_pos", "High = 1 (DI)"),
      optDIpolarity_neg(*this, diGroup_, "optDIpolarity_neg", "Low = 1 (DIB)"),
      frameDO(*this, "frameDO", "Data out"),
      optDOpolarity_pos(*this, doGroup_, "optDOpolarity_pos", "High = 1 (DO)"),
      optDOpolarity_neg(*this, doGroup_, "optDOpolarity_neg", "Low = 1 (DOB)"),
      types(*this, session_),
      extraPins(*this),
      lstSortedPinNumbers(*this, "lstSortedPinNumbers", sortedPins_),
      chkEnableLog(*this, "chkEnableLog", "Enable Session Log"),
      frameDataLogging(*this, "frameDataLogging", "Continuous sending"),
      optLogOff(*this, logGroup_, "optLogOff", "Turn off the Session Log in Continuous Send mode"),
      optLogForever(*this, logGroup_, "optLogForever",
                    "Keep recording messages until the Session Log is full"),
      optLogFixedNumber(*this, logGroup_, "optLogFixedNumber",
                        "Record a fixed number of messages and then stop"),
      lblMessageLimit(*this, "lblMessageLimit", "Stop after:"),
      txtMessageLimit(*this, "txtMessageLimit"),
      cmdOK(*this, "cmdOK", "&OK"),
      cmdApply(*this, "cmdApply", "&Apply"),
      cmdCancel(*this, "cmdCancel", "&Cancel") {
    for (forms::Control* control : {static_cast<forms::Control*>(&lblPortDisabled),
                                    static_cast<forms::Control*>(&lblSPIPinsDisabled),
                                    static_cast<forms::Control*>(&lstSortedPinNumbers),
                                    static_cast<forms::Control*>(&frameSPIBaudRate)})
        control->hide();
    for (int page = 2; page <= FrameConfig.last(); ++page)
        FrameConfig(page).hide();
    SPIBaudRate(session_.SPIBaudRate / baudStep).setValue(true);
    registerProcedures();
}

void ConfigureDialog::registerProcedures() {
    procedure("Form_Load", [this] { Form_Load(); });
    procedure("SetDefaults", [this] { SetDefaults(); });
    procedure("cmdOK_Click", [this] { cmdOK_Click(); });
    procedure("cmdApply_Click", [this] { cmdApply_Click(); });
    procedure("Btn_ParallelPort_Click", [this] { Btn_ParallelPort_Click(); });
    procedure("chkSerialPort_Click", [this] { chkSerialPort_Click(); });
    procedure("chkHardCodeLPT_Click", [this](int index) { chkHardCodeLPT_Click(index); });
    procedure("cmdCancel_Click", [this] { cmdCancel_Click(); });
    procedure("TabStripConfig_Click", [this] { TabStripConfig_Click(); });
    procedure("SPIBaudRate_Click", [this](int index) {
        if (SPIBaudRate(index).value())
            session_.SPIBaudRate = static_cast<std::int16_t>(index * baudStep);
    });
    procedure("chkEnableLog_Click", [this] { chkEnableLog_Click(); });
    procedure("optLogOff_Click", [this] { enableLogLimit(false); });
    procedure("optLogForever_Click", [this] { enableLogLimit(false); });
    procedure("optLogFixedNumber_Click", [this] { enableLogLimit(optLogFixedNumber.value()); });
}

void ConfigureDialog::Form_Load() {
    TabStripConfig.setSelected(1);
    cmbPortsAvailable.clear();
    session_.LPTPortAddresses = {address378, 0, 0, 0};
    session_.ParallelPortReady = false;
    enablePortControls(false);
    if (session_.StartingUp == ConstOn) {
        SetDefaults();
        saveSnapshot();
        savePortSnapshot();
    } else {
        showInForce();
        cmdCancel_Click();
        setVisible(true);
    }
}

void ConfigureDialog::SetDefaults() {
    txtPartName.setText("Generic");
    cmbSPIWordLength.setText("8");
    optBinary.setValue(true);
    ChkSerialPort.setValue(1);
    if (session_.LPTPortAddresses[0] != address378 && !cmbPortsAvailable.items().empty())
        cmbPortsAvailable.setListIndex(0);
    for (const auto& box : chkHardCodeLPT)
        box->setValue(0);
    cmbCS.setText("2");
    cmbDI.setText("3");
    cmbCLK.setText("4");
    cmbDO.setText("12");
    optMSBfirst.setValue(true);
    optCSnegative.setValue(true);
    optDIpolarity_pos.setValue(true);
    optDOpolarity_pos.setValue(true);
    types.TabStripSPItype.setSelected(session_.SPIType);
    types.TabStripSPItype_Click();
    extraPins.setDefaults();
    for (forms::CheckBox* part : {&CheckEnable72361, &CheckEnable72517, &CheckEnable72518,
                                  &CheckEnable72537, &CheckEnable72516})
        part->setValue(0);
    chkEnableLog.setValue(1);
    chkEnableLog_Click();
    optLogFixedNumber.setValue(true);
    txtMessageLimit.setText("5");
    parts_.singleWord.txtHexWordToSend.setText("");
    parts_.singleWord.lblHexWordReceived.setCaption("");
}

void ConfigureDialog::Btn_ParallelPort_Click() {
    ParallelPort& port = parts_.pins.machinePort();
    if (port.IsWinNT())
        port.SetFastMode(0);
    cmbPortsAvailable.clear();
    for (std::int16_t n = 1; n <= 3; ++n) {
        const std::int16_t address = port.GetLPTPortAddress(n);
        session_.LPTPortAddresses.at(static_cast<std::size_t>(n - 1)) = address;
        if (address == 0)
            continue;
        cmbPortsAvailable.enable();
        chkHardCodeLPT(n - 1).enable();
        cmbPortsAvailable.addItem(
            fmt::format("LPT{}: 0x{:X}", n, static_cast<std::uint16_t>(address)));
        session_.ParallelPortReady = true;
        cmbPortsAvailable.setListIndex(0);
    }
    listAdapters();
    if (!session_.ParallelPortReady)
        parts_.boxes.show({.text = "A parallel port was not detected.",
                           .hint = "\"bitlux doctor\" in a terminal tells what is missing."});
}

void ConfigureDialog::listAdapters() {
    if (!adapters.addFound())
        return;
    cmbPortsAvailable.enable();
    session_.ParallelPortReady = true;
    if (cmbPortsAvailable.listIndex() < 0)
        cmbPortsAvailable.setListIndex(0);
}

void ConfigureDialog::chooseAdapter(const std::string& name) {
    listAdapters();
    if (adapters.select(name))
        return;
    parts_.boxes.show({.text = fmt::format("The adapter {} was not detected.", name),
                       .hint = "\"bitlux doctor\" in a terminal tells what is missing."});
    if (!cmbPortsAvailable.items().empty() && !adapters.has(cmbPortsAvailable.items()[0])) {
        cmbPortsAvailable.setListIndex(0);
        return;
    }
    // Words that are meant for the chip on one adapter must not reach that on another.
    cmbPortsAvailable.clear();
    session_.ParallelPortReady = false;
    parts_.adapterBus.leave();
}

void ConfigureDialog::chkSerialPort_Click() {
    if (ChkSerialPort.checked()) {
        lblSPIBitRange.setCaption(rangeOnUsb);
        frameSPIBaudRate.show();
        for (const auto& box : chkHardCodeLPT)
            box->setValue(0);
        parts_.startUsb();
    } else if (session_.ParallelPortReady) {
        enablePortControls(true);
        frameSPIBaudRate.hide();
        framePortPins.show();
        showBusFrames(false);
        lblSPIBitRange.setCaption(rangeOnPort);
    }
}

void ConfigureDialog::arrangeFor(DongleLink::Found found) {
    if (found == DongleLink::Found::Opened) {
        arrangeForDongle();
        return;
    }
    ChkSerialPort.setValue(0);
    ChkSerialPort.disable();
    frameSPIBaudRate.hide();
    lblSPIBitRange.setCaption(rangeOnPort);
    if (found == DongleLink::Found::None && !session_.ParallelPortReady)
        return;
    enablePortControls(true);
    showBusFrames(false);
    if (found == DongleLink::Found::NotOpened)
        framePortPins.show();
}

void ConfigureDialog::arrangeForDongle() {
    enablePortControls(false);
    framePortPins.hide();
    showBusFrames(true);
    // A dongle that was plugged in later can be chosen again, and is where there is no other bus.
    ChkSerialPort.enable();
    if (!session_.ParallelPortReady)
        ChkSerialPort.setValue(1);
    else if (!ChkSerialPort.checked())
        chkSerialPort_Click(); // the port is in use and keeps its settings
}

void ConfigureDialog::enablePortControls(bool enabled) {
    lblLPTaddress.setEnabled(enabled);
    cmbPortsAvailable.setEnabled(enabled);
    for (const auto& box : chkHardCodeLPT)
        box->setEnabled(enabled);
}

void ConfigureDialog::showBusFrames(bool onDongle) {
    for (forms::Frame* frame :
         {&frameSPIBitOrder, &frameCS, &frameDI, &frameDO, &types.frameSPItype})
        frame->show();
    for (forms::Label* label :
         {&lblPortDisabled, &lblSPIPinsDisabled, &extraPins.lblExtraPinsDisabled})
        label->hide();
    extraPins.frameStandardPins.setVisible(!onDongle);
    extraPins.frameOpenCollectorPins.setVisible(!onDongle);
    extraPins.frameUSBExtraPins.setVisible(onDongle);
}

void ConfigureDialog::chkHardCodeLPT_Click(int index) {
    cmbPortsAvailable.enable();
    if (chkHardCodeLPT(index).checked())
        for (const auto& box : chkHardCodeLPT)
            if (box->index() != index)
                box->setValue(0);
    for (const auto& box : chkHardCodeLPT)
        if (box->checked())
            cmbPortsAvailable.disable();
}

void ConfigureDialog::TabStripConfig_Click() {
    const int page = TabStripConfig.selected();
    if (page == session_.ConfigTab)
        return;
    FrameConfig(page).show();
    FrameConfig(session_.ConfigTab).hide();
    session_.ConfigTab = static_cast<std::int16_t>(page);
}

void ConfigureDialog::chkEnableLog_Click() {
    const bool on = chkEnableLog.checked();
    frameDataLogging.setEnabled(on);
    parts_.log.setEnabled(on);
    session_.SessionLogEnabled = on ? ConstOn : ConstOff;
}

void ConfigureDialog::enableLogLimit(bool enabled) {
    lblMessageLimit.setEnabled(enabled);
    txtMessageLimit.setEnabled(enabled);
}

} // namespace bitlux
