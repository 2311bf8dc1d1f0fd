#include "bench/scripted_desk.h"
#include "platform/failure.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form_set.h"
#include "platform/forms/text_lines.h"
#include "platform/forms/timer.h"
#include "support/rows.h"

#include <functional>
#include <new>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::forms::test {
namespace {

using Strings = std::vector<std::string>;
using bitlux::test::Rows;

class SampleForm : public Form {
public:
    explicit SampleForm(FormSet& set) : Form(set, "frmSample", "Sample") {}

    Button cmdSend{*this, "cmdSend"};
    Button cmdSendAll{*this, "cmdSendAll"};
    ControlArray<Button> cmdBit{*this, "cmdBit", 4};
    CheckBox chkLog{*this, "chkLog"};
    OptionGroup order;
    OptionButton optMSB{*this, order, "optMSB"};
    OptionButton optLSB{*this, order, "optLSB"};
    ComboBox cmbList{*this, "cmbList", ComboBox::Style::List, {"8", "16", "24"}};
    ComboBox cmbBits{*this, "cmbBits", ComboBox::Style::Editable, {"8", "16", "24"}};
    TextBox txtWord{*this, "txtWord"};
    std::shared_ptr<TextLines> lines = std::make_shared<TextLines>();
    ListBox lstLog{*this, "lstLog", lines};
    TabStrip tabs{*this, "tabs", {{"One", ""}, {"Two", ""}, {"Three", ""}}};
    Label lblWord{*this, "lblWord"};
};

class Forms : public testing::Test {
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
    FormSlot<SampleForm> slot{
        set, "frmSample", [this] { return std::make_unique<SampleForm>(set); }, [](SampleForm&) {}};
    SampleForm& form = *slot;
    Strings ran;
};

TEST_F(Forms, NamesWhatIsNearAnUnknownName) {
    const Rows<const char*, const char*, Strings> cases{
        {"frmSampel.cmdSend", "There is no frmSampel; there is frmSample", {"frmSample"}},
        {"frmSample.cmdsend",
         "There is no frmSample.cmdsend; there is cmdSend, cmdSendAll",
         {"cmdSend", "cmdSendAll"}},
        {"frmSample.cmdBit(4)",
         "There is no frmSample.cmdBit(4); there is cmdBit(0), cmdBit(1), cmdBit(2)",
         {"cmdBit(0)", "cmdBit(1)", "cmdBit(2)"}},
        {"frmSample.lblWurd", "There is no frmSample.lblWurd; there is lblWord", {"lblWord"}},
        {"frmSample.lblWord", "There is no frmSample.lblWord of this kind", {}},
        {"frmSample.quite something else", "There is no frmSample.quite something else", {}},
        {"cmdSend", "There is no cmdSend", {}},
        {"", "There is no ", {}}};
    for (const auto& [name, text, near] : cases)
        try {
            set.get<Button>(name);
            ADD_FAILURE() << name << " was found";
        } catch (const UnknownName& unknown) {
            EXPECT_STREQ(unknown.what(), text);
            EXPECT_EQ(unknown.nearOnes(), near) << name;
        }
}

TEST_F(Forms, RefusesASecondControlOfAName) {
    EXPECT_THROW(Label(form, "cmdSend"), std::logic_error);
    EXPECT_THROW(Button(form, "cmdBit", "", 2), std::logic_error);
    EXPECT_EQ(&form.control("cmdSend"), &form.cmdSend); // the first is still there
    {
        const Label passing(form, "lblPassing");
        EXPECT_EQ(&form.control("lblPassing"), &passing);
    }
    EXPECT_THROW((void)form.control("lblPassing"), UnknownName);
}

TEST_F(Forms, BindsProceduresToControlsByName) {
    note("CMDSEND_Click");
    form.procedure("cmdbit_Click",
                   [this](int index) { ran.push_back("bit " + std::to_string(index)); });
    form.keyProcedure("TxtWord_KeyDown", [this](KeyCode code) {
        ran.push_back("key " + std::to_string(static_cast<int>(code)));
    });
    note("Compute");
    note("lstLog_Click");
    note("lstLog_DblClick");
    form.cmdSend.click();
    form.cmdBit(2).click();
    form.cmdBit(0).click();
    form.txtWord.key(KeyCode::Enter);
    form.lstLog.doubleClick();
    form.cmbBits.doubleClick(); // has no handler
    form.cmdSendAll.click();    // nor has this
    EXPECT_EQ(takeRan(), (Strings{"CMDSEND_Click", "bit 2", "bit 0", "key 13", "lstLog_DblClick"}));
    form.lstLog.disable();
    EXPECT_THROW(form.lstLog.doubleClick(), Unreachable);
    EXPECT_THROW(note("cmdSent_Click"), std::logic_error);

    form.call("Compute");
    form.call("cmdbit_Click", 3);
    form.call("TxtWord_KeyDown", 13);
    form.call("CMDSEND"); // what it mainly does
    EXPECT_EQ(takeRan(), (Strings{"Compute", "bit 3", "key 13", "CMDSEND_Click"}));
    EXPECT_THROW(form.call("Compute", 1), Failure);
    EXPECT_THROW(form.call("cmdbit_Click"), Failure);
    EXPECT_THROW(form.call("Computed"), UnknownName);
    EXPECT_EQ(takeRan(), Strings{});
}

TEST_F(Forms, RunAHandlerOnceForAValueThatChanges) {
    for (const char* name : {"chkLog_Click", "cmbList_Click", "cmbBits_Click", "lstLog_Click",
                             "tabs_Click", "optMSB_Click", "optLSB_Click"})
        note(name);
    form.lines->add("first");
    form.lines->add("second");
    const Rows<const char*, std::function<void()>> cases{
        {"chkLog_Click", [this] { form.chkLog.setValue(1); }},
        {"cmbList_Click", [this] { form.cmbList.setListIndex(2); }},
        {"cmbBits_Click", [this] { form.cmbBits.setText("16"); }},
        {"lstLog_Click", [this] { form.lstLog.setListIndex(1); }},
        {"tabs_Click", [this] { form.tabs.setSelected(3); }},
        {"optMSB_Click", [this] { form.optMSB.setValue(true); }},
        {"optLSB_Click", [this] { form.optLSB.setValue(true); }}};
    for (const auto& [handler, assign] : cases) {
        assign();
        EXPECT_EQ(takeRan(), Strings{handler});
        assign();
        EXPECT_EQ(takeRan(), Strings{}) << handler << " ran for an equal value";
    }
    // A hand's click counts on what is current too.
    form.tabs.click(3);
    form.lstLog.select(1);
    form.cmbList.select(2);
    EXPECT_EQ(takeRan(), (Strings{"tabs_Click", "lstLog_Click", "cmbList_Click"}));
}

TEST_F(Forms, OptionsOfAGroupExcludeEachOther) {
    note("optMSB_Click");
    note("optLSB_Click");
    bool msbWhileHandled = true;
    form.optMSB.setValue(true);
    form.procedure("optLSB_Click", [&] { msbWhileHandled = form.optMSB.value(); });
    form.optLSB.click();
    EXPECT_FALSE(form.optMSB.value());
    EXPECT_FALSE(msbWhileHandled);
    EXPECT_TRUE(form.optLSB.value());
    EXPECT_EQ(takeRan(), Strings{"optMSB_Click"}); // not again when it was cleared
    form.optLSB.setValue(false);
    EXPECT_FALSE(form.optMSB.value());
}

TEST_F(Forms, ComboBoxesKeepTextAndSelectionTogether) {
    const Rows<const char*, std::function<void(ComboBox&)>, int, const char*> cases{
        {"select", [](ComboBox& box) { box.select(1); }, 1, "16"},
        {"edit to the text of an item", [](ComboBox& box) { box.edit("24"); }, -1, "24"},
        {"edit to no item", [](ComboBox& box) { box.edit("17"); }, -1, "17"},
        {"select nothing again", [](ComboBox& box) { box.setListIndex(-1); }, -1, "17"},
        {"assign an item", [](ComboBox& box) { box.setText("8"); }, 0, "8"},
        {"take the selection away", [](ComboBox& box) { box.setListIndex(-1); }, -1, ""},
        {"add and assign", [](ComboBox& box) { box.addItem("32"), box.setText("32"); }, 3, "32"},
        {"remove an item before", [](ComboBox& box) { box.removeItem(0); }, 2, "32"},
        {"remove the item", [](ComboBox& box) { box.removeItem(2); }, -1, ""},
        {"select and type", [](ComboBox& box) { box.select(0), box.edit("9"); }, -1, "9"},
        {"other items", [](ComboBox& box) { box.setItems({"9"}); }, -1, ""},
        {"clear", [](ComboBox& box) { box.select(0), box.clear(); }, -1, ""}};
    for (const auto& [action, act, listIndex, text] : cases) {
        act(form.cmbBits);
        EXPECT_EQ(form.cmbBits.listIndex(), listIndex) << action;
        EXPECT_EQ(form.cmbBits.text(), text) << action;
    }
}

TEST_F(Forms, RefuseValuesThatDoNotExist) {
    form.lines->add("first");
    form.cmbList.setListIndex(1);
    const std::vector<std::pair<const char*, std::function<void()>>> cases{
        {"check box 2", [this] { form.chkLog.setValue(2); }},
        {"check box -1", [this] { form.chkLog.setValue(-1); }},
        {"combo box entry 3", [this] { form.cmbList.setListIndex(3); }},
        {"combo box entry -2", [this] { form.cmbList.setListIndex(-2); }},
        {"removed combo box entry 3", [this] { form.cmbList.removeItem(3); }},
        {"combo box text", [this] { form.cmbList.setText("17"); }},
        {"list line 1", [this] { form.lstLog.setListIndex(1); }},
        {"list line -2", [this] { form.lstLog.setListIndex(-2); }},
        {"text of list line 1", [this] { (void)form.lstLog.line(1); }},
        {"tab 0", [this] { form.tabs.setSelected(0); }},
        {"tab 4", [this] { form.tabs.setSelected(4); }},
        {"removed tab 4", [this] { form.tabs.removeTab(4); }}};
    for (const auto& [what, action] : cases)
        EXPECT_THROW(action(), Failure) << what;
    EXPECT_EQ(form.cmbList.text(), "16");
    EXPECT_EQ(form.tabs.count(), 3);
}

TEST_F(Forms, RemovingATabKeepsASelection) {
    for (const auto& [selected, removed, left] :
         Rows<int, int, int>{{3, 3, 2}, {3, 1, 2}, {2, 3, 2}, {1, 1, 1}}) {
        TabStrip strip(form, "strip", {{"A", ""}, {"B", ""}, {"C", ""}});
        note("strip_Click");
        strip.setSelected(selected);
        takeRan();
        strip.removeTab(removed);
        EXPECT_EQ(strip.selected(), left) << selected << " selected, removed " << removed;
        EXPECT_EQ(takeRan(), Strings{});
    }
}

TEST_F(Forms, AListForgetsASelectionWhoseLineIsGone) {
    for (const char* line : {"a", "b", "c"})
        form.lines->add(line);
    form.lstLog.setListIndex(1);
    form.lines->add("d");
    form.lstLog.linesChanged();
    EXPECT_EQ(form.lstLog.listIndex(), 1);
    form.lines->clear();
    form.lstLog.linesChanged();
    EXPECT_EQ(form.lstLog.listIndex(), -1);
}

TEST_F(Forms, AHandCannotReachWhatIsHiddenOrDisabled) {
    note("cmdSend_Click");
    note("tabs_Click");
    note("cmbBits_Click");
    note("chkLog_Click");
    const std::vector<std::pair<Control*, std::function<void()>>> cases{
        {&form.cmdSend, [this] { form.cmdSend.click(); }},
        {&form.chkLog, [this] { form.chkLog.click(); }},
        {&form.optMSB, [this] { form.optMSB.click(); }},
        {&form.cmbBits, [this] { form.cmbBits.select(1); }},
        {&form.cmbBits, [this] { form.cmbBits.edit("8"); }},
        {&form.txtWord, [this] { form.txtWord.edit("A5"); }},
        {&form.txtWord, [this] { form.txtWord.key(KeyCode::Enter); }},
        {&form.tabs, [this] { form.tabs.click(2); }}};
    for (const auto& [control, action] : cases) {
        control->disable();
        EXPECT_THROW(action(), Unreachable) << control->fullName() << " disabled";
        control->enable();
        control->hide();
        EXPECT_THROW(action(), Unreachable) << control->fullName() << " hidden";
        control->show();
    }
    EXPECT_EQ(takeRan(), Strings{});
    EXPECT_EQ(form.txtWord.text() + form.cmbBits.text(), "");
    EXPECT_FALSE(form.chkLog.checked() || form.optMSB.value());
    EXPECT_EQ(boxes.shown().size(), 0U);

    form.chkLog.disable();
    form.chkLog.setValue(1); // code reaches it
    EXPECT_EQ(takeRan(), Strings{"chkLog_Click"});
}

TEST_F(Forms, AFailureInAHandlerIsOneBoxAndTheProgramGoesOn) {
    const std::vector<std::pair<const char*, std::function<void()>>> cases{
        {"Overflow", [] { throw Failure(Failure::Kind::Overflow, "Overflow"); }},
        {"Subscript out of range", [] { (void)Strings{}.at(1); }},
        {"Out of memory", [] { throw std::bad_alloc(); }},
        {"There is no frmOther", [this] { set.form("frmOther"); }},
        {"frmSample.cmdSendAll is disabled", [this] { form.cmdSendAll.click(); }}};
    form.cmdSendAll.disable();
    for (const auto& [text, failing] : cases) {
        // The assignment runs a handler, whose failure ends the handler that assigned.
        form.chkLog.setValue(0);
        form.procedure("chkLog_Click", failing);
        form.procedure("cmdSend_Click", [this] {
            form.lblWord.setCaption("before");
            form.chkLog.setValue(1);
            form.lblWord.setCaption("after");
        });
        form.cmdSend.click();
        EXPECT_EQ(boxes.takeTexts(), Strings{text});
        EXPECT_EQ(boxes.shown().back().place, "frmSample.cmdSend_Click");
        EXPECT_EQ(boxes.shown().back().buttons, MessageBox::Buttons::Ok) << text;
        EXPECT_EQ(boxes.shown().back().icon, MessageBox::Icon::None) << text;
        EXPECT_EQ(form.lblWord.caption(), "before") << text;
        EXPECT_TRUE(form.chkLog.checked()) << text;
        form.procedure("chkLog_Click", [] {});
    }
}

TEST_F(Forms, TellEachChangedControlOnce) {
    takeDirty();
    form.cmdSend.setCaption("Send");
    form.cmdSend.disable();
    form.optMSB.setValue(true);
    form.optLSB.setValue(true);
    form.cmdBit(1).setTooltip("Bit 1");
    EXPECT_EQ(takeDirty(), (Strings{"cmdSend", "optMSB", "optLSB", "cmdBit(1)"}));

    form.cmdSend.setCaption("Send");
    form.cmdSend.disable();
    form.cmdSend.show();
    form.optLSB.setValue(true);
    form.txtWord.setText("");
    form.tabs.setSelected(1);
    form.cmbBits.setListIndex(-1);
    EXPECT_EQ(takeDirty(), Strings{});

    {
        Label passing(form, "lblPassing");
        passing.setCaption("gone before the next frame");
        form.lblWord.setCaption("stays");
    }
    EXPECT_EQ(takeDirty(), Strings{"lblWord"});
}

TEST_F(Forms, OneControlHasTheFocus) {
    form.txtWord.setFocus();
    form.cmdSend.setFocus();
    EXPECT_TRUE(form.cmdSend.hasFocus());
    EXPECT_FALSE(form.txtWord.hasFocus());
    {
        Label passing(form, "lblPassing");
        passing.setFocus();
    }
    EXPECT_EQ(form.focus(), nullptr);
}

TEST(FormSlot, MakesAFormWhenItIsTouched) {
    ScriptedBoxes boxes;
    FormSet set(boxes);
    int made = 0;
    int loaded = 0;
    FormSlot<SampleForm> slot(
        set, "frmSample",
        [&] {
            ++made;
            return std::make_unique<SampleForm>(set);
        },
        [&](SampleForm& form) {
            ++loaded;
            slot->cmdSend.setCaption("Send"); // touches the form while it loads
            set.formShown.subscribe([&](Form& shown) { EXPECT_EQ(&shown, &form); });
        });
    EXPECT_EQ(set.names(), Strings{"frmSample"});
    EXPECT_EQ(made, 0);
    EXPECT_EQ(set.get<Button>("frmSample.cmdSend").caption(), "Send");
    set.form("frmSample").setVisible(true);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(loaded, 1);
}

TEST_F(Forms, KeysPassTheirHandlersBeforeTheBoxTakesThem) {
    // As a hexadecimal entry of two digits: capitals, no other characters, the second is replaced.
    form.procedure("txtWord_KeyPress", [this](int code) -> int {
        if (code == 8 || code == 13)
            return code;
        const int capital = code >= 'a' ? code - 'a' + 'A' : code;
        if (!(capital >= '0' && capital <= '9') && !(capital >= 'A' && capital <= 'F'))
            return 0;
        if (form.txtWord.text().size() == 2)
            form.txtWord.select(1, 1);
        return capital;
    });
    form.procedure("txtWord_Change", [this] { ran.push_back(form.txtWord.text()); });
    form.procedure("txtWord_KeyDown", [this](KeyCode code) {
        if (code == KeyCode::Escape)
            form.txtWord.setText("");
    });
    form.txtWord.type("a5g7\r");
    EXPECT_EQ(takeRan(), (Strings{"A", "A5", "A7"}));
    form.txtWord.key(keystrokeNamed("Backspace"));
    EXPECT_EQ(takeRan(), Strings{"A"});
    form.txtWord.select(0, 9);
    form.txtWord.key(keystrokeNamed("c"));
    form.txtWord.select(0, 0);
    form.txtWord.key(keystrokeNamed("Delete"));
    form.txtWord.type("12");
    form.txtWord.key(keystrokeNamed("Escape"));
    EXPECT_EQ(takeRan(), (Strings{"C", "", "1", "12", ""}));
    EXPECT_THROW(keystrokeNamed("Entr"), UnknownName);

    note("cmdSend_Click");
    form.cmdSend.key(KeyCode::Enter);
    EXPECT_EQ(takeRan(), Strings{"cmdSend_Click"});
    form.keyProcedure("cmdSend_KeyDown", [](KeyCode) {}); // looks at keys itself
    form.cmdSend.key(KeyCode::Enter);
    EXPECT_EQ(takeRan(), Strings{});
}

TEST_F(Forms, ProceduresTakeAndGiveValues) {
    bool stored = false;
    std::uint8_t parity = 0;
    form.variable("StoreCommands", stored);
    form.variable("ParityBit", parity);
    form.variable("Next", [] { return toValue(7); }, {});
    form.procedure("Twice", [](std::int16_t number) { return 2 * number; });
    form.procedure("Join", [](const std::string& left, double right, bool hex) {
        return fmt::format("{} {} {}", left, right, hex);
    });
    EXPECT_EQ(form.call("Twice", 21), Value(std::int64_t{42}));
    EXPECT_EQ(form.call("Join", "MUX Write", 2, true), Value("MUX Write 2 true"));
    form.writeVariable("StoreCommands", true);
    form.writeVariable("ParityBit", std::int64_t{255});
    EXPECT_TRUE(stored);
    EXPECT_EQ(form.readVariable("ParityBit"), Value(std::int64_t{255}));

    const std::vector<std::pair<const char*, std::function<void()>>> refused{
        {"frmSample.Twice takes 1 arguments, not 0", [this] { form.call("Twice"); }},
        {"A whole number is wanted, not a text", [this] { form.call("Twice", "21"); }},
        {"A whole number is wanted, not a truth value", [this] { form.call("Twice", true); }},
        {"Overflow: 40000 is not between -32768 and 32767", [this] { form.call("Twice", 40000); }},
        {"A truth value is wanted, not a whole number",
         [this] { form.writeVariable("StoreCommands", std::int64_t{1}); }},
        {"Overflow: 256 is not between 0 and 255",
         [this] { form.writeVariable("ParityBit", std::int64_t{256}); }},
        {"frmSample.Next can only be read", [this] { form.writeVariable("Next", false); }}};
    for (const auto& [text, action] : refused)
        try {
            action();
            ADD_FAILURE() << "not refused: " << text;
        } catch (const Failure& failure) {
            EXPECT_STREQ(failure.what(), text);
        }
    EXPECT_THROW((void)form.readVariable("StoreCommand"), UnknownName);
}

TEST_F(Forms, ScrollBarsTellDraggingFromChanging) {
    ScrollBar bar(form, "barTime", 5, 500);
    note("barTime_Change");
    note("barTime_Scroll");
    EXPECT_EQ(bar.value(), 5);
    bar.drag(40);
    bar.drag(50);
    bar.move(50); // let go
    bar.move(50);
    bar.setValue(60);
    EXPECT_EQ(takeRan(),
              (Strings{"barTime_Scroll", "barTime_Scroll", "barTime_Change", "barTime_Change"}));
    EXPECT_THROW(bar.setValue(4), Failure);
    bar.setRange(100, 200);
    EXPECT_EQ(bar.value(), 100);
}

class PanelForm : public Form {
public:
    PanelForm(FormSet& set, std::string name, Strings& ran)
        : Form(set, std::move(name), "Panel"), ran_(ran) {
        for (const char* event : {"Load", "Activate", "Deactivate", "QueryUnload", "Unload"})
            procedure(std::string("Form_") + event, [this, event] { note(event); });
        procedure("cmdQuit_Click", [this] {
            this->set().unload(this->name());
            cmdQuit.setCaption("gone"); // the form is still there
            note("after");
        });
        procedure("tmrPoll_Timer", [this] { note("Timer"); });
    }

    Button cmdQuit{*this, "cmdQuit"};
    Button cmdBack{*this, "cmdBack"};
    Timer tmrPoll{*this, "tmrPoll", 100, true};

private:
    void note(const std::string& event) { ran_.push_back(name() + " " + event); }
    Strings& ran_;
};

class Panels : public testing::Test {
protected:
    FormSlot<PanelForm> slot(const std::string& name) {
        return {set, name, [this, name] { return std::make_unique<PanelForm>(set, name, ran); }};
    }
    Strings takeRan() { return std::exchange(ran, {}); }

    VirtualClock clock;
    ScriptedDesk desk{clock};
    FormSet set{desk.boxes};
    Strings ran;
    FormSlot<PanelForm> a = slot("a");
    FormSlot<PanelForm> b = slot("b");
};

TEST_F(Panels, OneIsInFront) {
    set.show("a");
    set.show("a");
    set.show("b");
    EXPECT_EQ(takeRan(), (Strings{"a Load", "a Activate", "b Load", "a Deactivate", "b Activate"}));
    set.activate("a");
    set.activate("a"); // asked for by name it runs again
    set.activate(*a);  // as a window does
    EXPECT_EQ(takeRan(), (Strings{"b Deactivate", "a Activate", "a Activate"}));
    a->setVisible(false);
    EXPECT_EQ(takeRan(), (Strings{"a Deactivate", "b Activate"}));
    set.deactivate("a");
    set.deactivate("b");
    set.deactivate("b");
    EXPECT_EQ(takeRan(), Strings{"b Deactivate"});
    EXPECT_FALSE(set.isVisible("a"));
    set.show("a");
    set.show("b");
    takeRan();
    a->cmdBack.click();
    EXPECT_EQ(takeRan(), (Strings{"b Deactivate", "a Activate"})) << "who works it is at it";
    b->tmrPoll.fire();
    EXPECT_EQ(takeRan(), Strings{"b Timer"}) << "it may do so behind";
}

TEST_F(Panels, TimersLeaveOutWhatComesUnderTheirHandler) {
    desk.loop.drive(set);
    set.show("a");
    takeRan();
    bool first = true;
    a->procedure("tmrPoll_Timer", [&] {
        ran.emplace_back("in");
        if (std::exchange(first, false))
            desk.loop.waitForEvents(350'000'000); // a box stays on the screen
        ran.emplace_back("out");
    });
    desk.loop.waitForEvents(100'000'000);
    EXPECT_EQ(takeRan(), (Strings{"in", "out"}));
    desk.loop.waitForEvents(100'000'000);
    EXPECT_EQ(takeRan(), (Strings{"in", "out"}));
}

TEST_F(Panels, AnUnloadedFormIsMadeAnew) {
    desk.loop.drive(set);
    Strings going;
    set.formGoing.subscribe([&](Form& form) { going.push_back(form.name()); });
    set.unload("a"); // never made
    set.show("a");
    takeRan();
    a->cmdQuit.click();
    EXPECT_EQ(takeRan(), (Strings{"a QueryUnload", "a Unload", "a Deactivate", "a after"}));
    EXPECT_EQ(going, Strings{"a"});
    EXPECT_TRUE(set.takeDirty().empty());
    desk.loop.waitForEvents(150'000'000); // the timer went with it
    EXPECT_EQ(takeRan(), Strings{});
    EXPECT_EQ(set.get<Button>("a.cmdQuit").caption(), "");
    EXPECT_FALSE(a->visible());
    EXPECT_EQ(takeRan(), Strings{"a Load"});
    set.unload("a");
    EXPECT_EQ(takeRan(), (Strings{"a QueryUnload", "a Unload"}));
    bool told = false;
    set.unloadThrough("b", [&told] { told = true; });
    set.unload("b");
    EXPECT_TRUE(told);
}

TEST_F(Panels, TimersFireAsTheClockOfTheBenchPasses) {
    desk.loop.drive(set);
    set.show("a");
    set.show("b");
    takeRan();
    b->tmrPoll.setInterval(70);
    const auto passes = [this](int milliseconds) {
        for (const std::int64_t end = clock.nanoseconds() + milliseconds * std::int64_t{1'000'000};
             clock.nanoseconds() < end;)
            desk.loop.waitForEvents(end - clock.nanoseconds());
        return takeRan();
    };
    EXPECT_EQ(passes(99), Strings{"b Timer"});
    desk.loop.atTime(150'000'000, [this] { ran.emplace_back("action"); });
    EXPECT_EQ(passes(101), (Strings{"a Timer", "b Timer", "action", "a Timer"}));
    a->tmrPoll.disable();
    clock.spend(500'000'000); // a long word
    desk.loop.turn();
    EXPECT_EQ(takeRan(), Strings{"b Timer"}); // once for all that it missed
    EXPECT_EQ(passes(70), Strings{"b Timer"});
}

} // namespace
} // namespace bitlux::forms::test
