// A form by the names of its controls, procedures and variables.

#include "sample_form.h"

#include "support/test_bench.h"

#include <new>

#include <fmt/format.h>

namespace bitlux::forms::test {
namespace {

using Forms = SampleForm;

TEST_F(Forms, SuggestsNamesSimilarToAnUnknownOne) {
    const Rows<const char*, const char*, Strings> cases{
        {"frmSampel.cmdSend", "There is no frmSampel; there is frmSample", {"frmSample"}},
        {"frmSample.cmdsend",
         "There is no frmSample.cmdsend; there is cmdSend, cmdSendAll",
         {"cmdSend", "cmdSendAll"}},
        {"frmSample.cmdBit(4)",
         "There is no frmSample.cmdBit(4); there is cmdBit(0), cmdBit(1), cmdBit(2)",
         {"cmdBit(0)", "cmdBit(1)", "cmdBit(2)"}},
        {"frmSample.lblWord", "There is no frmSample.lblWord of this kind", {}},
        {"frmSample.quite something else", "There is no frmSample.quite something else", {}},
        {"cmdSend", "There is no cmdSend", {}}};
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
    EXPECT_EQ(&form.control("cmdSend"), &cmdSend); // the first is still there
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
    cmdSend.click();
    cmdBit(2).click();
    cmdBit(0).click();
    txtWord.key(KeyCode::Enter);
    lstLog.doubleClick();
    cmbBits.doubleClick(); // has no handler
    cmdSendAll.click();    // nor has this
    EXPECT_EQ(takeRan(), (Strings{"CMDSEND_Click", "bit 2", "bit 0", "key 13", "lstLog_DblClick"}));
    EXPECT_THROW(note("cmdSent_Click"), std::logic_error);

    form.call("Compute");
    form.call("cmdbit_Click", 3);
    form.call("TxtWord_KeyDown", 13);
    form.call("CMDSEND"); // what it mainly does
    EXPECT_EQ(takeRan(), (Strings{"Compute", "bit 3", "key 13", "CMDSEND_Click"}));
    EXPECT_THROW(form.call("Compute", 1), Failure);
    EXPECT_THROW(form.call("Computed"), UnknownName);
    EXPECT_EQ(takeRan(), Strings{});
}

TEST_F(Forms, TakesAndGivesValues) {
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

    const Rows<const char*, std::function<void()>> refused{
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
        EXPECT_EQ(bitlux::test::failureOf(action), text);
    EXPECT_THROW((void)form.readVariable("StoreCommand"), UnknownName);
}

TEST_F(Forms, ShowsAFailureOfAHandlerInOneBoxAndTheProgramGoesOn) {
    const Rows<const char*, std::function<void()>> cases{
        {"Overflow", [] { throw Failure(Failure::Kind::Overflow, "Overflow"); }},
        {"Subscript out of range", [] { (void)Strings{}.at(1); }},
        {"Out of memory", [] { throw std::bad_alloc(); }},
        {"There is no frmOther", [this] { set.form("frmOther"); }},
        {"frmSample.cmdSendAll is disabled", [this] { cmdSendAll.click(); }}};
    cmdSendAll.disable();
    for (const auto& [text, failing] : cases) {
        // The assignment runs a handler, whose failure ends the handler that assigned.
        form.procedure("chkLog_Click", failing);
        form.procedure("cmdSend_Click", [this] {
            lblWord.setCaption("before");
            chkLog.setValue(1);
            lblWord.setCaption("after");
        });
        cmdSend.click();
        EXPECT_EQ(boxes.takeTexts(), Strings{text});
        EXPECT_EQ(boxes.shown().back().place, "frmSample.cmdSend_Click");
        EXPECT_EQ(boxes.shown().back().buttons, MessageBox::Buttons::Ok);
        EXPECT_EQ(boxes.shown().back().icon, MessageBox::Icon::None);
        EXPECT_EQ(lblWord.caption(), "before") << text;
        EXPECT_TRUE(chkLog.checked()) << text;
        note("chkLog_Click");
        chkLog.setValue(0);
    }
}

} // namespace
} // namespace bitlux::forms::test
