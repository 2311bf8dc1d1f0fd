#include "batch_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr const char* sure = "Are you sure you want to delete this batch?";
constexpr auto yes = MessageBox::Answer::Yes;
constexpr auto no = MessageBox::Answer::No;

/// A bench with Batches A, B and C of one line each, and C loaded.
struct ThreeBatches : BatchBench {
    ThreeBatches() {
        for (const char* name : {"A", "B", "C"}) {
            setToSend({std::string("line of ") + name});
            saveBatch(name);
        }
        dirty();
    }
    forms::ComboBox& batches() { return get<forms::ComboBox>("frmMain.cmbBatches"); }
    std::string all() {
        std::string text;
        for (int n = 1; n < session().BatchCount(); ++n)
            for (const std::string& line : session().lstBatchList(n))
                text += line + "|";
        return text;
    }
};

TEST(CommandEditor, EditsTheList) {
    const Rows<std::string, int, Texts, int> cases{
        {"cmdMoveUpMult", -1, {"a", "b", "c"}, -1},
        {"cmdMoveUpMult", 0, {"a", "b", "c"}, 0},
        {"cmdMoveUpMult", 2, {"a", "c", "b"}, 1},
        {"cmdMoveDownMult", -1, {"a", "b", "c"}, -1},
        {"cmdMoveDownMult", 0, {"b", "a", "c"}, 1},
        {"cmdMoveDownMult", 2, {"a", "b", "c"}, 2},
        {"cmdRemoveMult", -1, {"a", "b", "c"}, -1},
        {"cmdRemoveMult", 1, {"a", "c"}, -1},
        {"cmdAddPause", -1, {"a", "b", "c", "* Pause"}, -1},
        {"cmdAddMult", -1, {"a", "b", "c"}, -1},
        {"cmdClearMultiple", 1, {}, -1}};
    for (const auto& [button, selected, lines, selectedThen] : cases) {
        BatchBench bench;
        bench.setToSend({"a", "b", "c"});
        bench.toSend().setListIndex(selected);
        // A continuous run gives way.
        bench.loop.atTurn(1, [&bench, name = "frmMain." + button] { bench.click(name); });
        bench.click("frmMain.cmdSendContinuous");
        EXPECT_EQ(bench.sendLines(), lines) << button << " " << selected;
        EXPECT_EQ(bench.toSend().listIndex(), selectedThen) << button << " " << selected;
    }
}

TEST(CommandEditor, AnswersEnterAndDoubleClick) {
    BatchBench bench;
    bench.save("a");
    auto& available = bench.get<forms::ListBox>("frmMain.lstCommandsAvailable");
    available.select(0);
    available.doubleClick();
    available.key(forms::KeyCode::Enter);
    bench.click("frmMain.cmdAddMult");
    EXPECT_EQ(bench.sendLines(), (Texts{"a", "a", "a"}));
    bench.toSend().select(0);
    bench.toSend().doubleClick();
    bench.toSend().select(0);
    bench.toSend().key(forms::KeyCode::Enter);
    EXPECT_EQ(bench.sendLines(), Texts{"a"});
}

TEST(AddWait, TakesNumbersThatFit) {
    const char* const tooLong = "Wait time cannot be greater than 2 billion milliseconds,\r\n"
                                "2 million seconds, 33333 minutes, 555 hours, or 23 days.";
    const char* const overflow = "Overflow";
    const char* const noNumber = "Type mismatch: the text is no number";
    const Rows<std::string, const char*, const char*> cases{
        {"0", "ms", nullptr},      {"1.5", "s", nullptr},
        {"+1e3", "ms", nullptr},   {"2000000", "s", nullptr},
        {"2000001", "s", tooLong}, {"2000000000.4", "ms", nullptr},
        {"33333", "min", nullptr}, {"555", "hrs", nullptr},
        {"23", "days", nullptr},   {"24", "days", tooLong},
        {"25", "days", overflow},  {"-25", "days", overflow},
        {"1e400", "ms", overflow}, {repeated(10000, '9'), "ms", overflow},
        {"abc", "s", noNumber},    {"", "s", noNumber},
        {"5 s", "s", noNumber},    {"1,5", "s", noNumber},
        {"inf", "s", noNumber},    {"+-1", "s", noNumber}};
    for (const auto& [number, unit, message] : cases) {
        BatchBench bench;
        bench.click("frmMain.cmdAddWait");
        const forms::Form& form = bench.program.forms().form("frmAddWait");
        EXPECT_EQ(bench.get<forms::ComboBox>("frmAddWait.cmbUnits").text(), "s");
        bench.edit("frmAddWait.txtWaitTime", number);
        bench.get<forms::ComboBox>("frmAddWait.cmbUnits").edit(unit);
        bench.get<forms::TextBox>("frmAddWait.txtWaitTime").key(forms::KeyCode::Enter);
        const bool added = message == nullptr;
        const Texts line{"* Wait " + number + " " + unit};
        EXPECT_EQ(bench.sendLines(), added ? line : Texts{});
        EXPECT_EQ(bench.boxes.takeTexts(), added ? Texts{} : Texts{message}) << line[0];
        EXPECT_EQ(form.visible(), !added) << line[0];
        bench.click("frmAddWait.cmdCancel");
        EXPECT_FALSE(form.visible());
    }
}

TEST(Batches, AreCopies) {
    ThreeBatches bench;
    EXPECT_EQ(bench.session().BatchCount(), 4);
    EXPECT_EQ(bench.all(), "A|line of A|B|line of B|C|line of C|");
    EXPECT_EQ(bench.batches().text(), "C");
    bench.batches().select(0);
    EXPECT_EQ(bench.sendLines(), Texts{"line of A"});
    bench.click("frmMain.cmdAddPause");
    EXPECT_EQ(bench.session().lstBatchList(1).size(), 2U);
    bench.setToSend({});
    bench.saveBatch("empty");
    EXPECT_EQ(bench.session().lstBatchList(4), Texts{"empty"});
    EXPECT_EQ(bench.batches().listIndex(), 3);
    EXPECT_TRUE(bench.dirty());
}

TEST(Batches, AreOverwrittenAfterAQuestion) {
    for (const bool overwrite : {true, false}) {
        ThreeBatches bench;
        bench.setToSend({"new"});
        bench.boxes.answer(overwrite ? yes : no);
        bench.saveBatch("B");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Batch name exists!  Overwrite it?"});
        EXPECT_EQ(bench.boxes.shown().back().icon, MessageBox::Icon::Exclamation);
        EXPECT_EQ(bench.all(), overwrite ? "A|line of A|B|new|C|line of C|"
                                         : "A|line of A|B|line of B|C|line of C|");
        EXPECT_EQ(bench.batches().items(), (Texts{"A", "B", "C"}));
        EXPECT_EQ(bench.dirty(), overwrite);
        EXPECT_FALSE(bench.program.forms().form("frmSaveBatch").visible());
    }
}

TEST(Batches, NeedAName) {
    ThreeBatches bench;
    bench.saveBatch("");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"No batch name entered.  Cannot Save."});
    EXPECT_FALSE(bench.program.forms().form("frmSaveBatch").visible());
    EXPECT_FALSE(bench.dirty());
    bench.click("frmMain.cmdSaveBatch");
    bench.edit("frmSaveBatch.txtBatchName", "D");
    bench.get<forms::TextBox>("frmSaveBatch.txtBatchName").key(forms::KeyCode::Enter);
    EXPECT_EQ(bench.batches().text(), "D");
}

TEST(Batches, AreDeleted) {
    const Rows<int, MessageBox::Answer, const char*, Texts> cases{
        {0, yes, "B|line of B|C|line of C|", {"line of B"}},
        {1, yes, "A|line of A|C|line of C|", {"line of A"}},
        {2, yes, "A|line of A|B|line of B|", {"line of A"}},
        {1, no, "A|line of A|B|line of B|C|line of C|", {"line of B"}}};
    for (const auto& [selected, answer, left, loaded] : cases) {
        ThreeBatches bench;
        bench.batches().select(selected);
        bench.boxes.answer(answer);
        bench.click("frmMain.cmdDeleteBatch");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{sure}) << selected;
        EXPECT_EQ(bench.boxes.shown().back().title, "Delete Batch");
        EXPECT_EQ(bench.all(), left) << selected;
        EXPECT_EQ(bench.sendLines(), loaded) << selected;
        EXPECT_EQ(bench.dirty(), answer == yes) << selected;
    }
}

TEST(Batches, AskTwiceBeforeTheLastIsKept) {
    for (const auto& [answers, kept] : Rows<std::vector<MessageBox::Answer>, bool>{
             {{yes}, false}, {{no, no}, true}, {{no, yes}, false}}) {
        BatchBench bench;
        bench.saveBatch("only");
        bench.dirty();
        for (const auto answer : answers)
            bench.boxes.answer(answer);
        bench.click("frmMain.cmdDeleteBatch");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts(answers.size(), sure));
        EXPECT_EQ(bench.session().BatchCount(), kept ? 2 : 1);
        EXPECT_EQ(bench.dirty(), !kept);
        auto& batches = bench.get<forms::ComboBox>("frmMain.cmbBatches");
        EXPECT_EQ(batches.text(), kept ? "only" : "");
        if (kept)
            continue;
        bench.click("frmMain.cmdDeleteBatch");
        batches.addItem("stray");
        batches.select(0);
        bench.click("frmMain.cmdDeleteBatch");
        EXPECT_EQ(bench.boxes.takeTexts(),
                  (Texts{"No batch selected.  Nothing to delete.", "No batches to delete."}));
    }
}

TEST(Batches, ReportANameThatDoesNotExist) {
    ThreeBatches bench;
    bench.session().lstBatchList(2).front() = "renamed";
    bench.batches().select(1);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Batch name was not found!"});
    EXPECT_EQ(bench.sendLines(), Texts{"line of C"});
}

} // namespace
} // namespace bitlux::test
