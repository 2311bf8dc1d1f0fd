#include "bench/scripted_desk.h"

#include <gtest/gtest.h>

namespace bitlux {
namespace {

using Answer = MessageBox::Answer;
using Buttons = MessageBox::Buttons;

TEST(ScriptedBoxes, AnswerInTheOrderOfTheScript) {
    ScriptedBoxes boxes;
    boxes.answer(Answer::No);
    boxes.answer(Answer::Cancel);
    EXPECT_EQ(boxes.show({.text = "save?", .buttons = Buttons::YesNo}), Answer::No);
    EXPECT_EQ(boxes.show({.text = "note"}), Answer::Ok); // takes no answer of the script
    EXPECT_EQ(boxes.takeTexts(), (std::vector<std::string>{"save?", "note"}));
    EXPECT_EQ(boxes.show({.text = "go on?", .buttons = Buttons::OkCancel}), Answer::Cancel);
    try {
        boxes.show({.text = "really?", .buttons = Buttons::YesNo});
        ADD_FAILURE() << "answered by nobody";
    } catch (const UnansweredBox& unanswered) {
        EXPECT_EQ(unanswered.box.text, "really?");
    }
    boxes.answer(Answer::Ok);
    EXPECT_EQ(boxes.show({.text = "done"}), Answer::Ok); // this one names its button
    EXPECT_THROW(boxes.show({.text = "go on?", .buttons = Buttons::OkCancel}), UnansweredBox);
    EXPECT_EQ(boxes.takeTexts(), (std::vector<std::string>{"go on?", "really?", "done", "go on?"}));
    EXPECT_EQ(boxes.answered(), (std::vector<std::optional<Answer>>{
                                    Answer::No, Answer::Ok, Answer::Cancel, {}, Answer::Ok, {}}));
    EXPECT_EQ(boxes.takeTexts(), std::vector<std::string>{});
}

TEST(ScriptedFileDialogs, AreCancelledWithoutAnAnswer) {
    ScriptedFileDialogs dialogs;
    dialogs.answer("first.txt");
    dialogs.answer(std::nullopt);
    dialogs.answer("third.txt");
    using Kind = FileDialog::Kind;
    EXPECT_EQ(dialogs.ask({Kind::Save, "Save", "", ""}), "first.txt");
    EXPECT_EQ(dialogs.ask({}), std::nullopt);
    EXPECT_EQ(dialogs.ask({}), "third.txt");
    EXPECT_EQ(dialogs.ask({}), std::nullopt);
    ASSERT_EQ(dialogs.shown().size(), 4U);
    EXPECT_EQ(dialogs.shown()[0].title, "Save");
}

TEST(ScriptedLoop, RunsActionsAtTheirTurnAndTime) {
    VirtualClock clock;
    ScriptedLoop loop(clock);
    std::string ran;
    loop.atTurn(2, [&ran] { ran += "turn "; });
    loop.atTime(100, [&] {
        ran += "late ";
        loop.atTime(100, [&ran] { ran += "added "; }); // is due at once
    });
    loop.atTime(50, [&] {
        ran += "early ";
        loop.atTurn(1, [&ran] { ran += "next "; });
    });
    const std::pair<std::int64_t, const char*> steps[] = {
        {0, ""}, {49, "turn "}, {1, "early "}, {49, "next "}, {1, "late added "}, {1, ""}};
    for (const auto& [time, expected] : steps) {
        clock.spend(time);
        loop.turn();
        EXPECT_EQ(std::exchange(ran, {}), expected) << "turn " << loop.turns();
    }
}

} // namespace
} // namespace bitlux
