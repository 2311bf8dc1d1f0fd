#include "sample_form.h"

#include <array>

namespace bitlux::forms::test {
namespace {

using Controls = SampleForm;

TEST_F(Controls, RunAHandlerOnceForAValueThatChanges) {
    for (const char* name : {"chkLog_Click", "cmbList_Click", "cmbBits_Click", "lstLog_Click",
                             "tabs_Click", "optMSB_Click", "optLSB_Click"})
        note(name);
    lines->add("first");
    lines->add("second");
    const Rows<const char*, std::function<void()>> cases{
        {"chkLog_Click", [this] { chkLog.setValue(1); }},
        {"cmbList_Click", [this] { cmbList.setListIndex(2); }},
        {"cmbBits_Click", [this] { cmbBits.setText("16"); }},
        {"lstLog_Click", [this] { lstLog.setListIndex(1); }},
        {"tabs_Click", [this] { tabs.setSelected(3); }},
        {"optMSB_Click", [this] { optMSB.setValue(true); }},
        {"optLSB_Click", [this] { optLSB.setValue(true); }}};
    for (const auto& [handler, assign] : cases) {
        assign();
        EXPECT_EQ(takeRan(), Strings{handler});
        assign();
        EXPECT_EQ(takeRan(), Strings{}) << handler << " ran for an equal value";
    }
    // A user's click on what is selected already counts too.
    tabs.click(3);
    lstLog.select(1);
    cmbList.select(2);
    EXPECT_EQ(takeRan(), (Strings{"tabs_Click", "lstLog_Click", "cmbList_Click"}));
}

TEST_F(Controls, ComboBoxesKeepTextAndSelectionTogether) {
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
        act(cmbBits);
        EXPECT_EQ(cmbBits.listIndex(), listIndex) << action;
        EXPECT_EQ(cmbBits.text(), text) << action;
    }
}

TEST_F(Controls, RefuseValuesThatDoNotExist) {
    lines->add("first");
    cmbList.setListIndex(1);
    for (const std::int16_t value : std::array<std::int16_t, 2>{2, -1})
        EXPECT_THROW(chkLog.setValue(value), Failure) << value;
    for (const int entry : {3, -2})
        EXPECT_THROW(cmbList.setListIndex(entry), Failure) << entry;
    EXPECT_THROW(cmbList.removeItem(3), Failure);
    EXPECT_THROW(cmbList.setText("17"), Failure);
    for (const int line : {1, -2})
        EXPECT_THROW(lstLog.setListIndex(line), Failure) << line;
    EXPECT_THROW((void)lstLog.line(1), Failure);
    for (const int tab : {0, 4})
        EXPECT_THROW(tabs.setSelected(tab), Failure) << tab;
    EXPECT_THROW(tabs.removeTab(4), Failure);
    EXPECT_EQ(cmbList.text(), "16");
    EXPECT_EQ(tabs.count(), 3);
}

TEST_F(Controls, RemovingATabKeepsASelection) {
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

TEST_F(Controls, AListForgetsASelectionWhoseLineIsGone) {
    for (const char* line : {"a", "b", "c"})
        lines->add(line);
    lstLog.setListIndex(1);
    lines->add("d");
    lstLog.linesChanged();
    EXPECT_EQ(lstLog.listIndex(), 1);
    lines->clear();
    lstLog.linesChanged();
    EXPECT_EQ(lstLog.listIndex(), -1);
}

TEST_F(Controls, OptionsOfAGroupExcludeEachOther) {
    note("optMSB_Click");
    bool msbWhileHandled = true;
    optMSB.setValue(true);
    form.procedure("optLSB_Click", [&] { msbWhileHandled = optMSB.value(); });
    optLSB.click();
    EXPECT_FALSE(optMSB.value() || msbWhileHandled);
    EXPECT_TRUE(optLSB.value());
    EXPECT_EQ(takeRan(), Strings{"optMSB_Click"}); // not again when it was cleared
    optLSB.setValue(false);
    EXPECT_FALSE(optMSB.value());
}

TEST_F(Controls, RefuseUserInputWhileHiddenOrDisabled) {
    for (const char* handler :
         {"cmdSend_Click", "lstLog_DblClick", "tabs_Click", "cmbBits_Click", "chkLog_Click"})
        note(handler);
    const Rows<Control*, std::function<void()>> cases{
        {&cmdSend, [this] { cmdSend.click(); }},
        {&chkLog, [this] { chkLog.click(); }},
        {&optMSB, [this] { optMSB.click(); }},
        {&cmbBits, [this] { cmbBits.select(1); }},
        {&cmbBits, [this] { cmbBits.edit("8"); }},
        {&txtWord, [this] { txtWord.edit("A5"); }},
        {&txtWord, [this] { txtWord.key(KeyCode::Enter); }},
        {&lstLog, [this] { lstLog.doubleClick(); }},
        {&tabs, [this] { tabs.click(2); }}};
    for (const auto& [control, action] : cases) {
        control->disable();
        EXPECT_THROW(action(), Unreachable) << control->fullName() << " disabled";
        control->enable();
        control->hide();
        EXPECT_THROW(action(), Unreachable) << control->fullName() << " hidden";
        control->show();
    }
    EXPECT_EQ(takeRan(), Strings{});
    EXPECT_EQ(txtWord.text() + cmbBits.text(), "");
    EXPECT_FALSE(chkLog.checked() || optMSB.value());
    EXPECT_EQ(boxes.shown().size(), 0U);

    chkLog.disable();
    chkLog.setValue(1); // code reaches it
    EXPECT_EQ(takeRan(), Strings{"chkLog_Click"});
}

TEST_F(Controls, AreReportedOnceWhenTheyChanged) {
    takeDirty();
    const auto change = [this] {
        cmdSend.setCaption("Send");
        cmdSend.disable();
        optLSB.setValue(true);
        cmdBit(1).setTooltip("Bit 1");
    };
    optMSB.setValue(true);
    change();
    EXPECT_EQ(takeDirty(), (Strings{"optMSB", "cmdSend", "optLSB", "cmdBit(1)"}));
    change();
    cmdSend.show();
    txtWord.setText("");
    tabs.setSelected(1);
    cmbBits.setListIndex(-1);
    EXPECT_EQ(takeDirty(), Strings{});

    {
        Label passing(form, "lblPassing");
        passing.setCaption("gone before the next frame");
        passing.setFocus();
        lblWord.setCaption("stays");
    }
    EXPECT_EQ(takeDirty(), Strings{"lblWord"});
    EXPECT_EQ(form.focus(), nullptr);
    EXPECT_THROW((void)form.control("lblPassing"), UnknownName);
}

TEST_F(Controls, PassKeysToTheirHandlersFirst) {
    // As an entry of two digits: capitals, no G, the second digit is replaced.
    form.procedure("txtWord_KeyPress", [this](int code) {
        if (code == 'g')
            return 0;
        if (code >= '0' && txtWord.text().size() == 2)
            txtWord.select(1, 1);
        return code >= 'a' ? code - 'a' + 'A' : code;
    });
    form.procedure("txtWord_Change", [this] { ran.push_back(txtWord.text()); });
    form.procedure("txtWord_KeyDown", [this](KeyCode code) {
        if (code == KeyCode::Escape)
            txtWord.setText("");
    });
    txtWord.type("a5g7\r");
    EXPECT_EQ(takeRan(), (Strings{"A", "A5", "A7"}));
    txtWord.key(keystrokeNamed("Backspace"));
    EXPECT_EQ(takeRan(), Strings{"A"});
    txtWord.select(0, 9);
    txtWord.key(keystrokeNamed("c"));
    txtWord.select(0, 0);
    txtWord.key(keystrokeNamed("Delete"));
    txtWord.type("12");
    txtWord.key(keystrokeNamed("Escape"));
    EXPECT_EQ(takeRan(), (Strings{"C", "", "1", "12", ""}));
    EXPECT_THROW(keystrokeNamed("Entr"), UnknownName);

    note("cmdSend_Click");
    cmdSend.key(KeyCode::Enter);
    EXPECT_EQ(takeRan(), Strings{"cmdSend_Click"});
    form.keyProcedure("cmdSend_KeyDown", [](KeyCode) {}); // looks at keys itself
    cmdSend.key(KeyCode::Enter);
    EXPECT_EQ(takeRan(), Strings{});
}

TEST_F(Controls, DistinguishDraggingAScrollBarFromMovingIt) {
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

} // namespace
} // namespace bitlux::forms::test
