// Keys and mouse as the X server sees them, and the events that objects get.

#include "selvane/input/InputManager.h"

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/loop/GameManager.h"
#include "support/InputWitness.h"
#include "support/WindowTest.h"
#include "support/waitUntil.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Window/Event.hpp>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <sstream>
#include <thread>
#include <utility>

namespace {

using sv::DisplayManager;
using sv::GameManager;
using sv::InputManager;
using Lines = std::vector<std::string>;

DisplayManager &display() {
    return DisplayManager::getInstance();
}

struct InputManagerTest : test::WindowTest {
    /// A window of 400 by 400 pixels and 20 by 10 cells, which has the pointer and the keys.
    void startInput(const std::vector<std::string> &server_arguments = {}) {
        if (!server)
            server.emplace(1600, 1200, server_arguments);
        configure("window_horizontal_pixels:400,window_vertical_pixels:400,"
                  "window_horizontal_chars:20,window_vertical_chars:10");
        ASSERT_EQ(display().startUp(), 0);
        ASSERT_EQ(input.startUp(), 0);
        ASSERT_TRUE(server->enterWindow());
        // The events of arriving are nobody's concern.
        witness.registerInterest(sv::MOUSE_EVENT);
        stepWith("moved -1 at 0.1 0.05");
        witness.registerInterest(sv::KEYBOARD_EVENT);
        startLog(1);
    }

    /// The events of one step.
    Lines step() {
        display().swapBuffers();
        input.getInput();
        return witness.take();
    }

    /// The events of the step in which that one comes; those of the last step if it does not come.
    Lines stepWith(const std::string &event) {
        Lines seen;
        EXPECT_TRUE(test::waitUntil([&] {
            seen = step();
            return std::find(seen.begin(), seen.end(), event) != seen.end();
        })) << "there was no event: "
            << event;
        return seen;
    }

    void waitFor(const Lines &events) {
        EXPECT_TRUE(test::waitUntil([&] { return step() == events; }))
            << testing::PrintToString(events);
    }

    /// Holds F and the left button down, and does `action` at the first such event. Returns the
    /// events of that step.
    Lines actAt(const std::string &event, const std::function<void()> &action) {
        bool is_done = false;
        witness.on_event = [&](const std::string &seen) {
            if (seen == event && !std::exchange(is_done, true))
                action();
        };
        server->movePointer(50, 130);
        server->pressKey("f");
        server->pressButton(1);
        const Lines seen = stepWith(event);
        witness.on_event = nullptr;
        return seen;
    }

    test::InputWitness witness;
    InputManager &input = InputManager::getInstance();
};

TEST_F(InputManagerTest, every_key_has_its_number) {
    startInput();
    const auto expect_key = [&](const std::string &name, int key) {
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
    };
    // The first number and the names of keys that follow each other.
    const std::pair<int, const char *> runs[] = {
        {0, "space Return Escape Tab Left Right Up Down Pause KP_Subtract KP_Add grave period"},
        {13, "comma slash equal backslash KP_Multiply apostrophe semicolon Control_L Control_R"},
        {22, "Shift_L Shift_R F1"},
        {33, "F10 F11 F12 a"},
        {61, "z 1"},
        {70, "9 0 BackSpace"},
        {96, "Scroll_Lock"}, // From here on, SFML's numbers above the engine's.
        {153, "minus"},
        {163, "Delete"},
        {167, "KP_Divide"},
    };
    for (const auto &[first, names] : runs) {
        std::istringstream words(names);
        int key = first;
        for (std::string name; words >> name; ++key)
            expect_key(name, key);
    }
}

TEST_F(InputManagerTest, other_layouts_type_their_own_characters) {
    server.emplace();
    ASSERT_EQ(std::system("setxkbmap de"), 0);
    startInput();
    witness.registerInterest(sv::TEXT_EVENT);
    const struct {
        std::vector<std::string> keys; // Pressed one after the other, then released.
        std::string text;
    } cases[] = {
        {{"udiaeresis"}, "\u00FC"},
        {{"Shift_L", "udiaeresis"}, "\u00DC"},
        {{"Shift_L", "ssharp"}, "?"},
        {{"Shift_L", "less"}, ">"},
        {{"less"}, "<"},
        {{"y"}, "y"}, // Where others have Z.
        {{"ISO_Level3_Shift", "e"}, "\u20AC"},
        {{"BackSpace", "Return", "Escape", "Tab", "Delete", "space"}, " "},
        {{"dead_circumflex", "a"}, "\u00E2"},
    };
    for (const auto &[keys, text] : cases) {
        for (const std::string &key : keys)
            server->pressKey(key);
        Lines seen = stepWith("typed " + text);
        std::erase_if(seen, [](const std::string &event) { return !event.starts_with("typed "); });
        EXPECT_EQ(seen, Lines{"typed " + text});
        for (const std::string &key : keys)
            server->releaseKey(key);
        waitFor({});
    }
}

TEST_F(InputManagerTest, mouse_events_carry_the_cell_of_the_window) {
    startInput();
    server->movePointer(50, 130);
    EXPECT_EQ(stepWith("moved -1 at 2.5 3.25"), Lines{"moved -1 at 2.5 3.25"});
    EXPECT_EQ(step(), Lines()) << "it rests";
    const auto expect_click = [&](int button, const std::string &where) {
        server->pressButton(button);
        EXPECT_EQ(stepWith("clicked " + where), (Lines{"clicked " + where, "held " + where}));
        server->releaseButton(button); // It has no event of its own.
        waitFor({});
    };
    expect_click(1, "0 at 2.5 3.25");
    expect_click(3, "1 at 2.5 3.25");
    expect_click(2, "2 at 2.5 3.25");
    // A side button is none of the three, and not polled.
    server->pressButton(8);
    EXPECT_EQ(stepWith("clicked -1 at 2.5 3.25"), Lines{"clicked -1 at 2.5 3.25"});
    server->releaseButton(8);
    // The far corner: 799 / 2 and 199 * 2 pixels of the window that was configured.
    server->resizeWindow(800, 200);
    server->movePointer(799, 199);
    stepWith("moved -1 at 19.975 9.95");
    expect_click(1, "0 at 19.975 9.95");
}

TEST_F(InputManagerTest, background_input_counts_unless_configured_off) {
    startInput();
    const Lines held{"held 0 at 2.5 3.25", "down 37"};
    server->movePointer(50, 130);
    server->pressButton(1);
    server->pressKey("b");
    stepWith("pressed 37");
    for (const bool is_heard : {true, false}) {
        configure(is_heard ? "background_input:true" : "background_input:false");
        server->focusElsewhere();
        waitFor(is_heard ? held : Lines());
        server->pressKey("c");
        EXPECT_EQ(step().size(), is_heard ? 3U : 0U) << "c is typed elsewhere";
        server->releaseKey("c");
        server->focusWindow();
        waitFor(held);
    }
}

TEST_F(InputManagerTest, a_closed_window_ends_game_and_input) {
    startInput();
    server->pressKey("a");
    stepWith("pressed 36");
    server->closeWindow();
    server->pressKey("b");
    Lines seen;
    EXPECT_TRUE(test::waitUntil([&] {
        seen = step();
        return GameManager::getInstance().getGameOver();
    }));
    EXPECT_EQ(seen, Lines()) << "a was held, and b was pressed after the closing";
    expectLogged({"InputManager::getInput(): Window close event. Setting game over."});
    stepWith("pressed 37");
    EXPECT_TRUE(input.isWindowClosed()) << "input that comes later does not take it back";
    input.shutDown();
    ASSERT_EQ(input.startUp(), 0);
    EXPECT_FALSE(input.isWindowClosed());
}

TEST_F(InputManagerTest, a_window_that_the_game_closes_ends_the_game) {
    startInput();
    EXPECT_EQ(actAt("pressed 41", [] { display().getWindow()->close(); }).back(), "pressed 41")
        << "f is held, and nobody hears of it";
    expectLogged({"InputManager::getInput(): Window close event. Setting game over."});
    EXPECT_TRUE(GameManager::getInstance().getGameOver());
    EXPECT_TRUE(input.isWindowClosed());
}

TEST_F(InputManagerTest, a_stopped_display_ends_the_steps_input) {
    startInput();
    const std::string held = "held 0 at 2.5 3.25";
    EXPECT_EQ(actAt(held, [] { display().shutDown(); }).back(), held)
        << "f is held, and nobody hears of it";
    EXPECT_EQ(logText(), "") << "nothing that the handler did not mean";
    EXPECT_FALSE(input.isWindowClosed());
}

TEST_F(InputManagerTest, a_restarted_display_is_read_at_once) {
    startInput({"r", "-ardelay", "20", "-arinterval", "10"});
    const auto restart = [](const std::string &style) {
        display().shutDown();
        configure("window_style:" + style);
        EXPECT_EQ(display().startUp(), 0);
    };
    for (const char *event : {"pressed 41", "down 41", "clicked 0 at 2.5 3.25"}) {
        actAt(event, [&] { restart("fullscreen"); });
        EXPECT_EQ(step().back(), "down 41") << "of the new window, at " << event;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        EXPECT_EQ(step().size(), 2U) << "one of the key and one of the button; it does not repeat";
        server->releaseButton(1);
        server->releaseKey("f");
        waitFor({});
        restart("default");
        ASSERT_TRUE(server->enterWindow());
        step();
    }
}

TEST_F(InputManagerTest, games_may_convert_sfml_keys_themselves) {
    startLog(15);
    sf::Event event{};
    event.type = sf::Event::KeyPressed;
    event.key.code = sf::Keyboard::Delete;
    EXPECT_EQ(input.toEventKeyboard(event).getKey(), 163);
    EXPECT_EQ(input.toEventKeyboard(event.key).getKey(), 163);
    const std::string line = "InputManager::toEventKeyboard(): Keyboard event '\xA3' (66)";
    EXPECT_EQ(logLines(), (Lines{line, line}));
}

TEST_F(InputManagerTest, starts_with_a_window_without_one_and_headless) {
    const auto start_and_stop = [&] {
        said();
        input.startUp();
        input.getInput();
        if (input.isStarted())
            input.shutDown();
        return said();
    };
    const std::string start = "InputManager::startUp(): ";
    const std::string started = start + "successfully started.\n";
    const std::string stopped = "InputManager::shutDown(): successfully stopped.\n";
    const std::string no_window =
        "InputManager::getInput(): DisplayManager unexpectedly returned null window!\n";
    startLog(5);
    EXPECT_EQ(start_and_stop(),
              start + "Error starting InputManager. DisplayManager must be started first.\n" +
                  no_window);
    startDisplay();
    EXPECT_EQ(start_and_stop(), start + "Keyboard repeated disabled.\n" + started +
                                    "InputManager::shutDown(): Keyboard repeat enabled.\n" +
                                    stopped);
    display().shutDown();
    configure("headless:true");
    ASSERT_EQ(display().startUp(), 0);
    EXPECT_EQ(start_and_stop(),
              start + "not doing input since in headless mode.\n" + started + stopped);
    configure("headless:false");
    EXPECT_EQ(start_and_stop(), start +
                                    "Warning - DisplayManager unexpectedly returned null window! "
                                    "Cannot disable keyboard repeat.\n" +
                                    started + no_window + stopped);
}

} // namespace
