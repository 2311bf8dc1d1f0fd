// Forms that are made, shown, and unloaded, and the timers on them.

#include "bench/scripted_desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form_set.h"
#include "platform/forms/timer.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::forms::test {
namespace {

using Strings = std::vector<std::string>;
constexpr std::int64_t millisecond = 1'000'000;

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
        return {set, name, [this, name] { return std::make_unique<PanelForm>(set, name, ran); },
                [this, name](PanelForm&) { set.form(name); }}; // touched while it loads
    }
    Strings takeRan() { return std::exchange(ran, {}); }
    Strings ranIn(int milliseconds) {
        const std::int64_t end = clock.nanoseconds() + milliseconds * millisecond;
        while (clock.nanoseconds() < end)
            desk.loop.waitForEvents(end - clock.nanoseconds());
        return takeRan();
    }

    VirtualClock clock;
    ScriptedDesk desk{clock};
    FormSet set{desk.boxes};
    Strings ran;
    FormSlot<PanelForm> a = slot("a");
    FormSlot<PanelForm> b = slot("b");
};

TEST_F(Panels, AreMadeOnFirstAccessAndOneIsInFront) {
    EXPECT_EQ(set.names(), (Strings{"a", "b"}));
    set.show("a");
    set.show("a");
    EXPECT_FALSE(set.isVisible("b"));
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
    EXPECT_EQ(takeRan(), (Strings{"b Deactivate", "a Activate"}))
        << "input brings its form to the front";
    b->tmrPoll.fire();
    EXPECT_EQ(takeRan(), Strings{"b Timer"}) << "it may do so in the background";
}

TEST_F(Panels, AreMadeAgainOnceUnloaded) {
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
    EXPECT_EQ(ranIn(150), Strings{}) << "the timer went with it";
    EXPECT_EQ(set.get<Button>("a.cmdQuit").caption(), "");
    EXPECT_FALSE(a->visible());
    EXPECT_EQ(takeRan(), Strings{"a Load"});
    set.unload("a");
    EXPECT_EQ(takeRan(), (Strings{"a QueryUnload", "a Unload"}));
    bool wasUnloaded = false;
    set.unloadThrough("b", [&wasUnloaded] { wasUnloaded = true; });
    set.unload("b");
    EXPECT_TRUE(wasUnloaded);
}

TEST_F(Panels, HaveTimersThatFireAsTheClockPasses) {
    desk.loop.drive(set);
    set.show("a");
    set.show("b");
    takeRan();
    b->tmrPoll.setInterval(70);
    EXPECT_EQ(ranIn(99), Strings{"b Timer"});
    desk.loop.atTime(150 * millisecond, [this] { ran.emplace_back("action"); });
    EXPECT_EQ(ranIn(101), (Strings{"a Timer", "b Timer", "action", "a Timer"}));
    a->tmrPoll.disable();
    clock.spend(500 * millisecond); // a long word
    desk.loop.turn();
    EXPECT_EQ(takeRan(), Strings{"b Timer"}) << "once for all that it missed";
    EXPECT_EQ(ranIn(70), Strings{"b Timer"});

    // What comes due under its own handler is left out.
    bool first = true;
    b->procedure("tmrPoll_Timer", [&] {
        ran.emplace_back("in");
        if (std::exchange(first, false))
            desk.loop.waitForEvents(350 * millisecond); // a box stays on the screen
        ran.emplace_back("out");
    });
    desk.loop.waitForEvents(70 * millisecond);
    EXPECT_EQ(takeRan(), (Strings{"in", "out"}));
    EXPECT_EQ(ranIn(70), (Strings{"in", "out"}));
}

} // namespace
} // namespace bitlux::forms::test
