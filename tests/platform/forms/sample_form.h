#pragma once

#include "bench/scripted_desk.h"
#include "platform/failure.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form_set.h"
#include "platform/forms/text_lines.h"
#include "support/rows.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::forms::test {

using Strings = std::vector<std::string>;
using bitlux::test::Rows;

/// A form with controls of every kind, and what ran on it.
class SampleForm : public testing::Test {
protected:
    /// Notes `name` whenever the handler of the same name runs.
    void note(const std::string& name) {
        form.procedure(name, [this, name] { ran.push_back(name); });
    }

    Strings takeRan() { return std::exchange(ran, {}); }

    Strings takeDirty() {
        Strings names;
        for (const Control* control : set.takeDirty())
            names.push_back(control->localName());
        return names;
    }

    ScriptedBoxes boxes;
    FormSet set{boxes};
    FormSlot<Form> slot{set, "frmSample",
                        [this] { return std::make_unique<Form>(set, "frmSample", "Sample"); }};
    Form& form = *slot;
    Button cmdSend{form, "cmdSend"};
    Button cmdSendAll{form, "cmdSendAll"};
    ControlArray<Button> cmdBit{form, "cmdBit", 4};
    CheckBox chkLog{form, "chkLog"};
    OptionGroup order;
    OptionButton optMSB{form, order, "optMSB"};
    OptionButton optLSB{form, order, "optLSB"};
    ComboBox cmbList{form, "cmbList", ComboBox::Style::List, {"8", "16", "24"}};
    ComboBox cmbBits{form, "cmbBits", ComboBox::Style::Editable, {"8", "16", "24"}};
    TextBox txtWord{form, "txtWord"};
    std::shared_ptr<TextLines> lines = std::make_shared<TextLines>();
    ListBox lstLog{form, "lstLog", lines};
    TabStrip tabs{form, "tabs", {{"One", ""}, {"Two", ""}, {"Three", ""}}};
    Label lblWord{form, "lblWord"};
    Strings ran;
};

} // namespace bitlux::forms::test
