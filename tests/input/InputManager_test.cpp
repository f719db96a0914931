// Keys and mouse as the X server sees them, and the events that objects get.

#include "selvane/input/InputManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/testing/Session.h"
#include "selvane/world/spawn.h"
#include "support/InputWitness.h"
#include "support/WindowTest.h"
#include "support/waitUntil.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Window/Event.hpp>
#include <algorithm>
#include <chrono>
#include <iterator>
#include <thread>
#include <utility>

namespace {

using sv::DisplayManager;
using sv::InputManager;
using Lines = std::vector<std::string>;

class InputManagerTest : public test::WindowTest {
  protected:
    ~InputManagerTest() override {
        if (input().isStarted())
            input().shutDown();
    }

    static InputManager &input() { return InputManager::getInstance(); }

    /// A window of 400 by 400 pixels and 20 by 10 cells, which has the pointer and the keys.
    void startInput(const std::vector<std::string> &server_arguments = {}) {
        server.emplace(1600, 1200, server_arguments);
        configure("window_horizontal_pixels:400,window_vertical_pixels:400,"
                  "window_horizontal_chars:20,window_vertical_chars:10");
        ASSERT_EQ(DisplayManager::getInstance().startUp(), 0);
        ASSERT_EQ(input().startUp(), 0);
        ASSERT_TRUE(server->enterWindow());
        // The events of arriving are nobody's concern.
        witness.registerInterest(sv::MOUSE_EVENT);
        stepWith("moved -1 at 0.1 0.05");
        witness.registerInterest(sv::KEYBOARD_EVENT);
    }

    /// The events of one step.
    Lines step() {
        witness.seen.clear();
        DisplayManager::getInstance().swapBuffers();
        input().getInput();
        return witness.seen;
    }

    /// The events of the step in which that one comes; none if it does not come.
    Lines stepWith(const std::string &event) {
        Lines last;
        Lines seen;
        const bool came = test::waitUntil([&] {
            seen = step();
            last = seen.empty() ? last : seen;
            return std::find(seen.begin(), seen.end(), event) != seen.end();
        });
        EXPECT_TRUE(came) << "there was no event: " << event << "; the last were "
                          << testing::PrintToString(last);
        return seen;
    }

    test::InputWitness witness;
};

TEST_F(InputManagerTest, a_held_key_gives_an_event_each_step) {
    startInput();
    startLog(15);
    server->pressKey("b");
    EXPECT_EQ(stepWith("pressed 37"), (Lines{"pressed 37", "down 37"}));
    expectLogged({"InputManager::toEventKeyboard(): Keyboard event '%' (1)"});
    EXPECT_EQ(step(), Lines{"down 37"});
    EXPECT_EQ(step(), Lines{"down 37"});
    server->releaseKey("b");
    EXPECT_EQ(stepWith("released 37"), Lines{"released 37"});
    EXPECT_EQ(step(), Lines());
    // One that came and went between two steps was never down.
    server->pressKey("q");
    server->releaseKey("q");
    EXPECT_EQ(stepWith("released 52"), (Lines{"pressed 52", "released 52"}));
}

TEST_F(InputManagerTest, every_key_has_its_number) {
    startInput();
    std::vector<std::pair<std::string, int>> keys;
    for (const char *name : {"space",     "Return",    "Escape",      "Tab",        "Left",
                             "Right",     "Up",        "Down",        "Pause",      "KP_Subtract",
                             "KP_Add",    "grave",     "period",      "comma",      "slash",
                             "equal",     "backslash", "KP_Multiply", "apostrophe", "semicolon",
                             "Control_L", "Control_R", "Shift_L",     "Shift_R",    "F1"})
        keys.emplace_back(name, keys.size());
    // The last four have the SFML's numbers above the engine's.
    const std::pair<std::string, int> others[] = {
        {"F10", 33},    {"F11", 34},     {"F12", 35},       {"a", 36},         {"z", 61},
        {"1", 62},      {"9", 70},       {"0", 71},         {"BackSpace", 72}, {"Scroll_Lock", 96},
        {"minus", 153}, {"Delete", 163}, {"KP_Divide", 167}};
    keys.insert(keys.end(), std::begin(others), std::end(others));
    for (const auto &[name, key] : keys) {
        SCOPED_TRACE(name);
        const std::string number = std::to_string(key);
        Lines while_held{"down " + number};
        if (key == 71)
            while_held.push_back("down 72"); // Polled a second time, as Backspace.
        else if (key == 34 || key == 35 || key >= 72)
            while_held.clear();
        server->pressKey(name);
        stepWith("pressed " + number);
        EXPECT_EQ(step(), while_held);
        server->releaseKey(name);
        EXPECT_EQ(stepWith("released " + number), Lines{"released " + number});
    }
}

TEST_F(InputManagerTest, held_keys_and_buttons_come_in_order) {
    sv::Session session;
    ASSERT_EQ(session.start(), 0);
    auto *listener = sv::spawn<test::InputWitness>();
    listener->registerInterest(sv::KEYBOARD_EVENT);
    listener->registerInterest(sv::MOUSE_EVENT);
    session.moveMouse({-2, 90});
    for (const auto button : {sv::MIDDLE, sv::RIGHT, sv::LEFT})
        session.pressButton(button);
    for (const int key : {71, 61, 24, 22, 0, 6})
        session.pressKey(static_cast<sv::Keyboard::Key>(key));
    session.play();
    listener->take();
    session.play();
    EXPECT_EQ(listener->take(),
              (Lines{"held 0 at -2 90", "held 1 at -2 90", "held 2 at -2 90", "down 6", "down 0",
                     "down 22", "down 24", "down 61", "down 71", "down 72"}));
}

TEST_F(InputManagerTest, mouse_events_carry_the_cell_of_the_window) {
    startInput();
    server->movePointer(50, 130);
    EXPECT_EQ(stepWith("moved -1 at 2.5 3.25"), Lines{"moved -1 at 2.5 3.25"});
    EXPECT_EQ(step(), Lines()) << "it rests";

    const std::pair<int, const char *> buttons[] = {{1, "0"}, {3, "1"}, {2, "2"}};
    for (const auto &[button, number] : buttons) {
        SCOPED_TRACE(number);
        const std::string clicked = std::string("clicked ") + number + " at 2.5 3.25";
        const std::string held = std::string("held ") + number + " at 2.5 3.25";
        server->pressButton(button);
        EXPECT_EQ(stepWith(clicked), (Lines{clicked, held}));
        EXPECT_EQ(step(), Lines{held});
        server->releaseButton(button); // It has no event of its own.
        EXPECT_TRUE(test::waitUntil([&] { return step().empty(); }));
    }
    // A side button is one of none of the three names.
    server->pressButton(8);
    EXPECT_EQ(stepWith("clicked -1 at 2.5 3.25"), Lines{"clicked -1 at 2.5 3.25"});
    server->releaseButton(8);
}

TEST_F(InputManagerTest, background_input_counts_unless_configured_off) {
    startInput();
    const Lines held{"held 0 at 2.5 3.25", "down 37"};
    server->movePointer(50, 130);
    server->pressButton(1);
    server->pressKey("b");
    stepWith("pressed 37");
    for (const std::string setting : {"true", "false"}) {
        SCOPED_TRACE(setting);
        configure("background_input:" + setting);
        server->focusElsewhere();
        const Lines expected = setting == "true" ? held : Lines();
        EXPECT_TRUE(test::waitUntil([&] { return step() == expected; }));
        server->pressKey("c");
        EXPECT_EQ(step().size(), setting == "true" ? 3U : 0U) << "c is typed elsewhere";
        server->releaseKey("c");
        server->focusWindow();
        EXPECT_TRUE(test::waitUntil([&] { return step() == held; }));
    }
    server->releaseKey("b");
    server->releaseButton(1);
}

TEST_F(InputManagerTest, a_resized_window_keeps_its_cells) {
    startInput();
    server->resizeWindow(800, 200);
    // The far corner: 799 / 2 and 199 * 2 pixels of the window that was configured.
    server->movePointer(799, 199);
    EXPECT_EQ(stepWith("moved -1 at 19.975 9.95").back(), "moved -1 at 19.975 9.95");
    server->pressButton(1);
    EXPECT_EQ(stepWith("clicked 0 at 19.975 9.95"),
              (Lines{"clicked 0 at 19.975 9.95", "held 0 at 19.975 9.95"}));
    server->releaseButton(1);
}

TEST_F(InputManagerTest, a_closed_window_ends_game_and_input) {
    startInput();
    startLog(1);
    sv::GameManager::getInstance().setGameOver(false);
    server->pressKey("a");
    stepWith("pressed 36");
    server->closeWindow();
    server->pressKey("b");
    Lines seen;
    EXPECT_TRUE(test::waitUntil([&] {
        seen = step();
        return sv::GameManager::getInstance().getGameOver();
    }));
    EXPECT_EQ(seen, Lines()) << "a was held, and b was pressed after the closing";
    expectLogged({"InputManager::getInput(): Window close event. Setting game over."});
    server->releaseKey("a");
    server->releaseKey("b");
    EXPECT_EQ(stepWith("released 37"), (Lines{"pressed 37", "released 36", "released 37"}));
    EXPECT_TRUE(input().isWindowClosed()) << "input that comes later does not take it back";
    input().shutDown();
    ASSERT_EQ(input().startUp(), 0);
    EXPECT_FALSE(input().isWindowClosed());
}

TEST_F(InputManagerTest, a_window_that_the_game_closes_ends_the_game) {
    startInput();
    startLog(1);
    sv::GameManager::getInstance().setGameOver(false);
    witness.on_event = [](const std::string &event) {
        if (event == "pressed 36")
            DisplayManager::getInstance().getWindow()->close();
    };
    server->pressKey("a");
    stepWith("pressed 36");
    EXPECT_EQ(witness.seen, Lines{"pressed 36"}) << "a is held, and nobody hears of it";
    expectLogged({"InputManager::getInput(): Window close event. Setting game over."});
    EXPECT_TRUE(sv::GameManager::getInstance().getGameOver());
    EXPECT_TRUE(input().isWindowClosed());
}

TEST_F(InputManagerTest, a_restarted_display_is_read_at_once) {
    startInput({"r", "-ardelay", "20", "-arinterval", "10"});
    const auto restart = [](const std::string &style) {
        DisplayManager::getInstance().shutDown();
        configure("window_style:" + style);
        EXPECT_EQ(DisplayManager::getInstance().startUp(), 0);
    };
    for (const std::string event : {"pressed 41", "down 41", "clicked 0 at 2.5 3.25"}) {
        SCOPED_TRACE(event);
        bool is_restarted = false;
        witness.on_event = [&](const std::string &seen) {
            if (seen == event && !std::exchange(is_restarted, true))
                restart("fullscreen");
        };
        server->movePointer(50, 130);
        server->pressKey("f");
        server->pressButton(1);
        EXPECT_TRUE(test::waitUntil([&] {
            step();
            return is_restarted;
        }));
        EXPECT_EQ(step().back(), "down 41") << "of the new window";
        server->releaseButton(1);
        server->releaseKey("f");
        EXPECT_TRUE(test::waitUntil([&] { return step().empty(); }));
        witness.on_event = nullptr;
        restart("default");
        ASSERT_TRUE(server->enterWindow());
        step();
    }
    server->pressKey("b");
    stepWith("pressed 37");
    for (int repeats = 0; repeats < 20; ++repeats) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        EXPECT_EQ(step(), Lines{"down 37"}) << "key repeat is on";
    }
    server->releaseKey("b");
}

TEST_F(InputManagerTest, a_stopped_display_ends_the_steps_input) {
    startInput();
    startLog(1);
    witness.on_event = [](const std::string &event) {
        if (event == "held 0 at 2.5 3.25")
            DisplayManager::getInstance().shutDown();
    };
    server->movePointer(50, 130);
    server->pressKey("a");
    server->pressButton(1);
    EXPECT_TRUE(test::waitUntil([&] {
        step();
        return DisplayManager::getInstance().getWindow() == nullptr;
    }));
    EXPECT_EQ(witness.seen.back(), "held 0 at 2.5 3.25") << "a is held, and nobody hears of it";
    EXPECT_EQ(logText(), "") << "nothing that the handler did not mean";
    EXPECT_FALSE(input().isWindowClosed());
}

TEST_F(InputManagerTest, games_may_convert_sfml_keys_themselves) {
    startLog(15);
    sf::Event event{};
    event.type = sf::Event::KeyPressed;
    event.key.code = sf::Keyboard::Delete;
    EXPECT_EQ(input().toEventKeyboard(event).getKey(), 163);
    EXPECT_EQ(input().toEventKeyboard(event.key).getKey(), 163);
    const std::string line = "InputManager::toEventKeyboard(): Keyboard event '\xA3' (66)";
    EXPECT_EQ(logLines(), (Lines{line, line}));
}

TEST_F(InputManagerTest, starts_with_a_window_without_one_and_headless) {
    const auto expect_log = [&](int answer, const std::string &lines) {
        said();
        EXPECT_EQ(input().startUp(), answer);
        input().getInput();
        EXPECT_EQ(said(), lines);
        if (input().isStarted())
            input().shutDown();
    };
    const std::string started = "InputManager::startUp(): successfully started.\n";
    const std::string start = "InputManager::startUp(): ";
    startLog(5);
    expect_log(-1, start + "Error starting InputManager. DisplayManager must be started first.\n"
                           "InputManager::getInput(): DisplayManager unexpectedly returned null "
                           "window!\n");
    startDisplay();
    expect_log(0, start + "Keyboard repeated disabled.\n" + started);
    EXPECT_EQ(said(), "InputManager::shutDown(): Keyboard repeat enabled.\n"
                      "InputManager::shutDown(): successfully stopped.\n");
    ASSERT_EQ(input().startUp(), 0);
    expect_log(-1, "InputManager::startup(): Warning! InputManager already started.\n");
    DisplayManager::getInstance().shutDown();
    sv::Config::getInstance().loadConfig("headless:true");
    ASSERT_EQ(DisplayManager::getInstance().startUp(), 0);
    expect_log(0, start + "not doing input since in headless mode.\n" + started);
    sv::Config::getInstance().loadConfig("headless:false");
    expect_log(0, start +
                      "Warning - DisplayManager unexpectedly returned null window! Cannot "
                      "disable keyboard repeat.\n" +
                      started +
                      "InputManager::getInput(): DisplayManager unexpectedly returned null "
                      "window!\n");
}

} // namespace
