#pragma once

#include "config/pin_field.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"

#include <string>
#include <vector>

namespace bitlux {

/// Rows of the dialog that choose extra pins of one kind on the parallel port: an enabling check, a
/// name and a pin of the connector. Names and pins can be changed only while the check is set.
class PinRows {
public:
    /// `kind` is part of the names of the controls ("chkDataPinEnable" for "Data") and of the pins.
    PinRows(forms::Form& form, const std::string& kind, int count,
            const std::vector<std::string>& pins);

    void setDefaults();
    void enable_Click(int row);

    [[nodiscard]] int count() const { return enable.last() + 1; }
    [[nodiscard]] bool enabled(int row) const { return enable(row).checked(); }

    forms::ControlArray<forms::CheckBox> enable;
    forms::ControlArray<forms::TextBox> name;
    forms::ControlArray<forms::ComboBox> assignment;

private:
    std::string kind_;
};

/// The page "Extra Pins" of the configuration dialog.
class ExtraPinPage {
public:
    explicit ExtraPinPage(forms::Form& form);

    void setDefaults();

    /// Whether every pin that is enabled on the port has a pin of the connector.
    [[nodiscard]] bool allAssigned() const;
    /// The pins that are enabled on the port; for the conflict test data pins, and pin 1, are
    /// prefixed with "9", so that all numbers have two digits.
    [[nodiscard]] std::vector<PinField> pinFields() const;
    /// Names of the pins that are enabled, data pins first.
    [[nodiscard]] std::vector<std::string> portNames() const;
    [[nodiscard]] std::vector<std::string> dongleNames() const;
    /// Of a pin of the dongle, 0 to 8.
    [[nodiscard]] static std::string donglePinName(int pin);
    /// Enables no pin of the dongle.
    void clearDonglePins();
    /// Names the bits of the pins that are enabled on the port and makes them low.
    void enterPinMaps(Session& session) const;

    void save(SavedDialog& saved) const;
    void restore(const SavedDialog& saved);

    forms::Label lblExtraPinsDisabled;
    forms::Frame frameStandardPins;
    forms::Frame frameOpenCollectorPins;
    forms::Frame frameUSBExtraPins;
    PinRows dataPins;    ///< chkDataPinEnable, txtDataPinName, cmbDataPinAssignment
    PinRows controlPins; ///< chkControlPinEnable, txtControlPinName, cmbControlPinAssignment
    forms::ControlArray<forms::CheckBox> Check;
};

} // namespace bitlux
