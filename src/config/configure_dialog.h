#pragma once

#include "config/adapter_entries.h"
#include "config/extra_pin_page.h"
#include "config/type_page.h"
#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/text_lines.h"
#include "sending/command_lists.h"
#include "sending/emptied_commands.h"
#include "sending/extra_pin_rows.h"
#include "sending/run_controls.h"
#include "sending/session_log.h"
#include "sending/single_word_page.h"
#include "session/session.h"
#include "transfer/dongle_link.h"
#include "transfer/pin_layer.h"

#include <array>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace bitlux {

/// The configuration dialog. Its controls hold the settings even while it is hidden; nothing
/// reaches the session before cmdApply_Click.
class ConfigureDialog : public forms::Form {
public:
    /// The dependencies of the dialog; all outlive it.
    struct Parts {
        Session& session;
        PinLayer& pins;
        AdapterBus& adapterBus;
        MessageBoxes& boxes;
        SingleWordPage& singleWord;
        SessionLog& log;
        CommandLists& commands;
        EmptiedCommands& emptied; ///< receives the words that Apply removes
        ExtraPinRows& extraPins;
        forms::Label& labelMainTitle;
        forms::Label& lblConfigNag;
        std::function<void()> startUsb;  ///< looks for the dongle and calls arrangeFor
        std::function<void()> resetTabs; ///< removes the part tabs of the main form
        std::function<void(std::int32_t partNumber)> addPartTab;
        std::function<bool(std::int32_t partNumber)> hasPartTab;
    };

    ConfigureDialog(forms::FormSet& set, Parts parts);

    void Form_Load();
    /// Sets the controls to the defaults; does not change the session.
    void SetDefaults();
    /// Copies the settings from the controls to the session and puts the idle levels on the wire. A
    /// step that refuses shows its message and ends Apply.
    void cmdApply_Click();
    /// Restores what was last accepted, and hides the dialog.
    void cmdCancel_Click();
    /// Applies, and hides the dialog on success.
    void cmdOK_Click();
    /// Looks for parallel ports.
    void Btn_ParallelPort_Click();
    void chkSerialPort_Click();
    void chkHardCodeLPT_Click(int index);
    void TabStripConfig_Click();
    void chkEnableLog_Click();
    /// Fills the rows of the main form with the pins that are enabled on the dongle, if it is in
    /// use.
    void showDonglePins();
    /// Looks for adapters and adds them to the list of ports. The first entry is selected where
    /// none was.
    void listAdapters();
    /// Selects an adapter that a configuration file names. When there is none, shows a message and
    /// selects the first parallel port; without one there is no port until the next search.
    void chooseAdapter(const std::string& name);
    /// Shows the settings of the bus after a search for the dongle.
    void arrangeFor(DongleLink::Found found);

    /// Whether Apply selects the dongle as the bus.
    [[nodiscard]] bool usesDongle() const { return ChkSerialPort.checked() && session_.USBReady; }
    /// The pins of the connector that an Apply of the open dialog refuses for a conflict; not
    /// meaningful on the dongle.
    [[nodiscard]] std::vector<PinClash> pinClashes() const;

private:
    // The steps of Apply, in their order. Those that can refuse return false then.
    void applyWordLength();
    bool applyToDongle(std::int16_t logLimit);
    bool applyToParallelPort(std::int16_t logLimit);
    void putOnWire(bool withControlPort);
    void showApplied();
    bool acceptPins();
    [[nodiscard]] std::vector<PinField> pinFields() const;
    void sortPinNumbers();
    [[nodiscard]] bool hasPinConflict() const;
    bool acceptPortChoice();
    bool settlePortChoice();
    bool acceptAdapter();
    bool acceptWordLength();
    bool acceptFractionalLength();
    bool acceptHexOnly();
    bool confirmed(const std::string& text);
    void applyPartName();
    void applyPins();
    void applyWordShape();
    void applyDisplay();
    [[nodiscard]] std::int16_t wantedLogLimit() const;
    void applyLogDecisions(std::int16_t limit);
    void choosePort();
    void chooseListedPort();
    void showPartTabs();
    [[nodiscard]] std::array<std::pair<forms::CheckBox*, std::int32_t>, 5> partBoxes();

    void saveSnapshot();
    void savePortSnapshot();
    void restoreSnapshot();
    /// Sets the controls that have no snapshot to what is in force.
    void showInForce();

    void recreateWord();
    void emptyLists();
    [[nodiscard]] double wantedWordLength() const;
    bool refuse(const std::string& text);

    void registerProcedures();
    void enablePortControls(bool enabled);
    void arrangeForDongle();
    void showBusFrames(bool onDongle);
    void enableLogLimit(bool enabled);

    Parts parts_;
    Session& session_;
    bool applySucceeded_ = false; ///< whether the last Apply went through all its steps

    forms::OptionGroup displayGroup_;
    forms::OptionGroup orderGroup_;
    forms::OptionGroup csGroup_;
    forms::OptionGroup diGroup_;
    forms::OptionGroup doGroup_;
    forms::OptionGroup logGroup_;
    forms::OptionGroup baudGroup_;
    std::shared_ptr<forms::TextLines> sortedPins_ = std::make_shared<forms::TextLines>();

public:
    forms::TabStrip TabStripConfig;
    forms::ControlArray<forms::Frame> FrameConfig; ///< pages 1 to 4

    // General
    forms::TextBox txtPartName;
    forms::ComboBox cmbSPIWordLength;
    forms::Label lblSPIBitRange;
    forms::OptionButton optBinary;
    forms::OptionButton optHex;
    forms::CheckBox ChkSerialPort;
    forms::Button Btn_ParallelPort;
    forms::Label lblPortDisabled;
    forms::Label lblLPTaddress;
    forms::ComboBox cmbPortsAvailable;
    AdapterEntries adapters;
    forms::ControlArray<forms::CheckBox> chkHardCodeLPT;
    forms::Frame frameSPIBaudRate;
    forms::ControlArray<forms::OptionButton> SPIBaudRate;
    forms::CheckBox CheckEnable72361;
    forms::CheckBox CheckEnable72517;
    forms::CheckBox CheckEnable72518;
    forms::CheckBox CheckEnable72537;
    forms::CheckBox CheckEnable72516;

    // SPI Pins
    forms::Label lblSPIPinsDisabled;
    forms::Frame framePortPins;
    forms::ComboBox cmbCS;
    forms::ComboBox cmbDI;
    forms::ComboBox cmbCLK;
    forms::ComboBox cmbDO;
    forms::Frame frameSPIBitOrder;
    forms::OptionButton optMSBfirst;
    forms::OptionButton optLSBfirst;
    forms::Frame frameCS;
    forms::OptionButton optCSnegative;
    forms::OptionButton optCSpositive;
    forms::Frame frameDI;
    forms::OptionButton optDIpolarity_pos;
    forms::OptionButton optDIpolarity_neg;
    forms::Frame frameDO;
    forms::OptionButton optDOpolarity_pos;
    forms::OptionButton optDOpolarity_neg;
    TypePage types;

    // Extra Pins
    ExtraPinPage extraPins;
    forms::ListBox lstSortedPinNumbers; ///< of the conflict test; hidden

    // Session Log
    forms::CheckBox chkEnableLog;
    forms::Frame frameDataLogging;
    forms::OptionButton optLogOff;
    forms::OptionButton optLogForever;
    forms::OptionButton optLogFixedNumber;
    forms::Label lblMessageLimit;
    forms::TextBox txtMessageLimit;

    forms::Button cmdOK;
    forms::Button cmdApply;
    forms::Button cmdCancel;
};

} // namespace bitlux
