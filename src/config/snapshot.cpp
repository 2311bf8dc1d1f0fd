// What the dialog held when it was last accepted, and its way back.

#include "config/configure_dialog.h"

#include <algorithm>
#include <string>

namespace bitlux {

namespace {

void choose(forms::OptionButton& first, forms::OptionButton& second, bool takeFirst) {
    (takeFirst ? first : second).setValue(true);
}

} // namespace

void ConfigureDialog::saveSnapshot() {
    SavedDialog& saved = session_.Saved;
    saved.SavedPartName = txtPartName.text();
    saved.SavedWordLengthText = cmbSPIWordLength.text();
    saved.SavedCSText = cmbCS.text();
    saved.SavedDIText = cmbDI.text();
    saved.SavedDOText = cmbDO.text();
    saved.SavedCLKText = cmbCLK.text();
    saved.SavedCSnegative = optCSnegative.value();
    saved.SavedDIpolarity_pos = optDIpolarity_pos.value();
    saved.SavedDOpolarity_pos = optDOpolarity_pos.value();
    saved.SavedSPITypeCaption = types.selectedCaption();
    saved.SavedBinary = optBinary.value();
    saved.SavedMSBfirst = optMSBfirst.value();
    saved.SavedLogOff = optLogOff.value();
    saved.SavedLogForever = optLogForever.value();
    saved.SavedLogFixed = optLogFixedNumber.value();
}

void ConfigureDialog::savePortSnapshot() {
    SavedDialog& saved = session_.Saved;
    extraPins.save(saved);
    saved.SavedHardCode3BC = chkHardCodeLPT(0).value();
    saved.SavedHardCode378 = chkHardCodeLPT(1).value();
    saved.SavedHardCode278 = chkHardCodeLPT(2).value();
    saved.SavedPortListIndex = cmbPortsAvailable.listIndex();
}

void ConfigureDialog::cmdCancel_Click() {
    restoreSnapshot();
    setVisible(false);
}

void ConfigureDialog::restoreSnapshot() {
    const SavedDialog& saved = session_.Saved;
    txtPartName.setText(saved.SavedPartName);
    cmbSPIWordLength.setText(saved.SavedWordLengthText);
    cmbCS.choose(saved.SavedCSText);
    cmbDI.choose(saved.SavedDIText);
    cmbDO.choose(saved.SavedDOText);
    cmbCLK.choose(saved.SavedCLKText);
    choose(optCSnegative, optCSpositive, saved.SavedCSnegative);
    choose(optDIpolarity_pos, optDIpolarity_neg, saved.SavedDIpolarity_pos);
    choose(optDOpolarity_pos, optDOpolarity_neg, saved.SavedDOpolarity_pos);
    types.select(saved.SavedSPITypeCaption);
    choose(optBinary, optHex, saved.SavedBinary);
    choose(optMSBfirst, optLSBfirst, saved.SavedMSBfirst);
    optLogOff.setValue(saved.SavedLogOff);
    optLogForever.setValue(saved.SavedLogForever);
    optLogFixedNumber.setValue(saved.SavedLogFixed);
    extraPins.restore(saved);
    chkHardCodeLPT(0).setValue(saved.SavedHardCode3BC);
    chkHardCodeLPT(1).setValue(saved.SavedHardCode378);
    chkHardCodeLPT(2).setValue(saved.SavedHardCode278);
    // The ports may have been found since; the first one is chosen then.
    const int ports = static_cast<int>(cmbPortsAvailable.items().size());
    if (ports > 0 && saved.SavedPortListIndex < ports)
        cmbPortsAvailable.setListIndex(std::max(saved.SavedPortListIndex, 0));
}

void ConfigureDialog::showInForce() {
    for (const auto& [box, number] : partBoxes())
        box->setValue(parts_.hasPartTab(number) ? 1 : 0);
    chkEnableLog.setValue(session_.SessionLogEnabled == ConstOn ? 1 : 0);
    chkEnableLog_Click();
    txtMessageLimit.setText(std::to_string(session_.ContinuousLogLimit));
    ChkSerialPort.setValue(session_.USBReady ? 1 : 0);
    if (!usesDongle())
        return;
    for (int pin = 0; pin <= extraPins.Check.last(); ++pin)
        extraPins.Check(pin).setValue(parts_.extraPins.has(ExtraPinPage::donglePinName(pin)) ? 1
                                                                                             : 0);
}

} // namespace bitlux
