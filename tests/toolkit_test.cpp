// The window toolkit model under a virtual clock: what the game relies on.
#include "ui/model/Toolkit.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ui/model/VirtualLoop.h"

namespace zd::ui {
namespace {

class TestWindow : public Window {
public:
    TestWindow(Toolkit& tk, std::string name)
        : Window(tk, std::move(name)),
          a(add<Timer>("a")),
          b(add<Timer>("b")),
          list(add<ListBox>("list")),
          pic(add<Image>("pic")),
          button(add<Image>("button")),
          box(add<TextBox>("box")) {}
    Timer& a;
    Timer& b;
    ListBox& list;
    Image& pic;
    Image& button;
    TextBox& box;
};

// Writes down what the toolkit tells the front end.
class RecordingFrontEnd : public FrontEnd {
public:
    void settled() override {
        if (heard.empty() || heard.back() != "settled") heard.push_back("settled");
    }
    void modalBegins(Window& w) override { heard.push_back("modal " + w.name()); }
    void broughtToFront(Window& w) override { heard.push_back("front " + w.name()); }
    void windowGone(Window& w) override { heard.push_back("gone " + w.name()); }
    void dragWindow(Window& w) override { heard.push_back("drag " + w.name()); }
    void programEnded() override { heard.push_back("ended"); }

    // Settling again with nothing between is written once.
    std::vector<std::string> heard;
};

class ToolkitTest : public ::testing::Test {
protected:
    ToolkitTest() : tk(loop, 15360, 11520) {
        loop.attach(tk);
        for (const char* name : {"one", "two", "three"}) {
            tk.define(name, [this, name](Toolkit& t) {
                auto w = std::make_unique<TestWindow>(t, name);
                w->Form_Load = [this, name] { log.push_back(std::string("load ") + name); };
                w->Form_Activate = [this, name] { log.push_back(std::string("activate ") + name); };
                w->Form_Unload = [this, name] { log.push_back(std::string("unload ") + name); };
                return w;
            });
        }
    }
    TestWindow& win(const char* name) { return tk.use<TestWindow>(name); }
    void start(Timer& t, int ms) {
        t.Enabled = true;
        t.Interval = ms;
    }

    VirtualLoop loop;
    Toolkit tk;
    std::vector<std::string> log;
};

TEST_F(ToolkitTest, PicturesAreSharedObjectsComparedByIdentity) {
    TestWindow& w = win("one");
    Picture original = tk.pictures().make("bilder", "die_0", 69, 66, "bank");
    Picture lookalike = tk.pictures().make("bilder", "die_0", 69, 66, "(design)");
    w.pic.picture = original;
    w.button.picture = w.pic.picture;
    EXPECT_TRUE(sameObject(w.button.picture, original));
    EXPECT_FALSE(sameObject(lookalike, original));
    // Assigning from a control without a picture empties the target.
    Image& empty = win("two").pic;
    w.button.picture = empty.picture;
    EXPECT_FALSE(w.button.picture);
}

TEST_F(ToolkitTest, TimersFireAfterOneIntervalAndStopOnEitherProperty) {
    TestWindow& w = win("one");
    int ticks = 0;
    w.a.TimerEvent = [&] { ++ticks; };
    w.a.Enabled = true;  // interval 0: does not run
    loop.FastForwardBy(1000);
    EXPECT_EQ(ticks, 0);
    w.a.Interval = 30;
    loop.FastForwardBy(29);
    EXPECT_EQ(ticks, 0);
    loop.FastForwardBy(1);
    EXPECT_EQ(ticks, 1);
    loop.FastForwardBy(90);
    EXPECT_EQ(ticks, 4);
    w.a.Enabled = false;
    loop.FastForwardBy(300);
    EXPECT_EQ(ticks, 4);
    w.a.Enabled = true;  // counts anew from now
    loop.FastForwardBy(29);
    EXPECT_EQ(ticks, 4);
    loop.FastForwardBy(1);
    EXPECT_EQ(ticks, 5);
    w.a.Interval = 0;
    loop.FastForwardBy(300);
    EXPECT_EQ(ticks, 5);
}

TEST_F(ToolkitTest, SimultaneousTimersFireInTheOrderTheyWereStarted) {
    TestWindow& w = win("one");
    std::vector<std::string> order;
    w.a.TimerEvent = [&] { order.push_back("a"); };
    w.b.TimerEvent = [&] { order.push_back("b"); };
    start(w.b, 100);
    start(w.a, 50);
    loop.FastForwardBy(200);
    EXPECT_EQ(order, (std::vector<std::string>{"a", "b", "a", "a", "b", "a"}));
}

TEST_F(ToolkitTest, AOneShotTimerThatRestartsAnotherHandsOnWithoutPause) {
    TestWindow& w = win("one");
    std::vector<std::int64_t> at;
    w.b.TimerEvent = [&] {
        at.push_back(loop.now());
        w.b.Enabled = false;
        w.b.Interval = 0;
        if (at.size() < 3) start(w.b, 500);
    };
    start(w.b, 500);
    loop.FastForwardBy(5000);
    EXPECT_EQ(at, (std::vector<std::int64_t>{500, 1000, 1500}));
}

TEST_F(ToolkitTest, SortedListBoxesInsertByCharacterOrder) {
    ListBox& list = win("one").list;
    list.Sorted = true;
    for (const char* item : {"9", "100", "642", "111", "642"}) list.AddItem(item);
    ASSERT_EQ(list.ListCount(), 5);
    EXPECT_EQ(list.List(0), "100");
    EXPECT_EQ(list.List(1), "111");
    EXPECT_EQ(list.List(4), "9");
    EXPECT_EQ(list.List(5), "");
    list.Clear();
    list.Sorted = false;
    list.AddItem("b");
    list.AddItem("a");
    EXPECT_EQ(list.List(0), "b");
}

TEST_F(ToolkitTest, WindowsAreMadeOnFirstUseAndAnewAfterUnload) {
    TestWindow& first = win("one");
    first.list.AddItem("kept");
    EXPECT_EQ(&win("one"), &first);
    EXPECT_EQ(win("one").list.ListCount(), 1);
    tk.dispatch([&] { tk.unload(first); });
    EXPECT_EQ(tk.loaded("one"), nullptr);
    EXPECT_EQ(win("one").list.ListCount(), 0);
    EXPECT_EQ(log, (std::vector<std::string>{"load one", "unload one", "load one"}));
}

TEST_F(ToolkitTest, ActivationFollowsShowingAndTheWindowAboveGoing) {
    TestWindow& one = win("one");
    TestWindow& two = win("two");
    log.clear();
    tk.show(one);
    tk.show(two);
    tk.show(two);  // already on top and active: nothing new
    tk.hide(two);
    tk.show(one);
    EXPECT_EQ(log, (std::vector<std::string>{"activate one", "activate two", "activate one"}));
    EXPECT_EQ(tk.activeWindow(), &one);
}

TEST_F(ToolkitTest, ModalShowsNestTimersFireBehindAndInputIsBlocked) {
    TestWindow& field = win("one");
    tk.show(field);
    int ticks = 0;
    field.a.TimerEvent = [&] { ++ticks; };
    start(field.a, 100);
    field.button.Click = [&] { log.push_back("field clicked"); };

    // Each step the loop asks for is what a user or script would do next.
    std::vector<std::function<void()>> steps = {
        [&] { loop.FastForwardBy(250); },
        [&] { EXPECT_FALSE(tk.click(field.button)); },
        [&] {
            TestWindow& inner = win("three");
            inner.button.Click = [&] { tk.unload(inner); };
            tk.showModal(inner);  // nested in the first modal show
            log.push_back("inner returned");
        },
        [&] { EXPECT_TRUE(tk.click(win("three").button)); },
        [&] { tk.unload(win("two")); },
    };
    std::size_t next = 0;
    loop.modalStep = [&] {
        if (next >= steps.size()) return false;
        steps[next++]();
        return true;
    };
    log.clear();
    tk.dispatch([&] {
        tk.showModal(win("two"));
        log.push_back("caller goes on");
    });
    EXPECT_EQ(ticks, 2);
    EXPECT_EQ(log,
              (std::vector<std::string>{"load two", "activate two", "load three", "activate three",
                                        "unload three", "activate two", "inner returned",
                                        "unload two", "activate one", "caller goes on"}));
    EXPECT_TRUE(tk.click(field.button));
}

TEST_F(ToolkitTest, AModalLoopWithNothingLeftToDoNamesTheOpenWindow) {
    tk.show(win("one"));
    try {
        tk.showModal(win("two"));
        FAIL() << "expected the modal loop to give up";
    } catch (const ModalWithoutInput& e) {
        EXPECT_EQ(e.window, "two");
    }
}

TEST_F(ToolkitTest, EndingUnwindsEveryNestedModalShowAndStopsTheClock) {
    TestWindow& field = win("one");
    tk.show(field);
    bool ranAfterModal = false;
    int ticks = 0;
    field.a.TimerEvent = [&] { ++ticks; };
    start(field.a, 10);
    loop.modalStep = [&] {
        tk.dispatch([&] { tk.end(); });
        return true;
    };
    tk.dispatch([&] {
        tk.showModal(win("two"));
        ranAfterModal = true;
    });
    EXPECT_TRUE(tk.ended());
    EXPECT_FALSE(ranAfterModal);
    loop.FastForwardBy(100);
    EXPECT_EQ(ticks, 0);
    EXPECT_FALSE(tk.click(field.button));
}

TEST_F(ToolkitTest, HiddenOrDisabledControlsTakeNoInput) {
    TestWindow& w = win("one");
    tk.show(w);
    int clicks = 0;
    w.button.Click = [&] { ++clicks; };
    w.button.Visible = false;
    EXPECT_FALSE(tk.click(w.button));
    w.button.Visible = true;
    w.button.Enabled = false;
    EXPECT_FALSE(tk.click(w.button));
    w.button.Enabled = true;
    EXPECT_TRUE(tk.click(w.button));
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(tk.click(win("two").button));  // loaded but never shown
}

TEST_F(ToolkitTest, TheFrontEndHearsWhatBecomesOfTheWindowsAndWhenToShowThem) {
    RecordingFrontEnd front;
    tk.setFrontEnd(&front);
    TestWindow& field = win("one");
    TestWindow& message = win("two");
    for (TestWindow* w : {&field, &message}) {
        w->Form_Activate = nullptr;
        w->Form_Unload = nullptr;
    }
    front.heard.clear();
    tk.dispatch([&] { tk.show(field); });
    loop.modalStep = [&] {
        front.heard.push_back("waiting");
        tk.dragWindow(message);
        tk.dispatch([&] { tk.unload(message); });
        return true;
    };
    tk.dispatch([&] { tk.showModal(message); });
    tk.dispatch([&] { tk.end(); });
    // The modal window is to be on the screen before the user can act.
    EXPECT_EQ(front.heard, (std::vector<std::string>{"front one", "settled", "modal two",
                                                     "front two", "settled", "waiting", "drag two",
                                                     "gone two", "settled", "ended", "settled"}));
    tk.setFrontEnd(nullptr);
}

TEST_F(ToolkitTest, WhatTheUserDoesToAWindowOrATextBoxReachesTheModel) {
    TestWindow& w = win("one");
    tk.show(w);
    EXPECT_TRUE(tk.moved(w, 1500, 750));
    EXPECT_EQ(w.Left, 1500);
    EXPECT_EQ(w.Top, 750);
    EXPECT_FALSE(tk.moved(win("two"), 0, 0));  // not on the screen

    w.box.Text = "Zwölf";  // five characters, six bytes
    EXPECT_TRUE(tk.selected(w.box, 1, 3));
    EXPECT_EQ(w.box.SelStart, 1);
    EXPECT_EQ(w.box.SelLength, 3);
    // Counted in characters and kept within the text.
    EXPECT_TRUE(tk.selected(w.box, 4, 9));
    EXPECT_EQ(w.box.SelLength, 1);
    EXPECT_TRUE(tk.focused(w.box));
    EXPECT_EQ(w.activeControl(), &w.box);

    // A locked box may be selected in but takes no focus; a hidden one
    // takes neither.
    w.setActiveControl(nullptr);
    w.box.Locked = true;
    EXPECT_TRUE(tk.selected(w.box, 0, 0));
    EXPECT_FALSE(tk.focused(w.box));
    w.box.Locked = false;
    w.box.Visible = false;
    EXPECT_FALSE(tk.selected(w.box, 2, 0));
    EXPECT_FALSE(tk.focused(w.box));
    EXPECT_EQ(w.box.SelStart, 0);
    EXPECT_EQ(w.activeControl(), nullptr);
}

}  // namespace
}  // namespace zd::ui
