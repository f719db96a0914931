// The desk in a real window, with real keys.

#include "selvane/core/EventKeyboard.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"
#include "support/WindowTest.h"
#include "support/environment.h"
#include "support/waitUntil.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <functional>
#include <iterator>
#include <thread>
#include <utility>

namespace {

const sf::Color spectral = sf::Color::Cyan; // The color of its box.

/// Counts steps and keys, and shows two characters.
class Sign : public sv::Object {
  public:
    Sign() {
        setSolidness(sv::SPECTRAL);
        setBox({{-4, -1}, 8, 2});
        setPosition({20, 10});
        setPath({{{35, 10}}}); // Which it follows with a speed of 0.
        setFollowPath(true);
        registerInterest(sv::STEP_EVENT);
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->isOfType(sv::STEP_EVENT))
            ++steps;
        else
            ++keys;
        return 1;
    }

    int draw() override { return sv::DisplayManager::getInstance().drawString({20, 10}, "hi"); }

    std::atomic<int> steps = 0;
    std::atomic<int> keys = 0;
};

struct DeskInWindow : test::WindowTest {
    DeskInWindow() {
        test::setEnvironment("SELVANE_DESK", "1");
        writeFile("sv-config.txt", std::string("frame_time:10,window_horizontal_pixels:800,"
                                               "window_vertical_pixels:480,window_horizontal_chars:"
                                               "40,window_vertical_chars:12,font_file:") +
                                       test::FONT + ",");
        server.emplace();
        prepareLog();
    }

    /// Runs a game with a sign, and closes the window when the person is done.
    void run(const std::function<void(Sign &)> &person) {
        sv::GameManager &game = sv::GameManager::getInstance();
        ASSERT_EQ(game.startUp(), 0);
        sv::WorldManager &world = sv::WorldManager::getInstance();
        world.setBoundary({{}, 80, 12});
        world.setViewSlack({0.5F, 0.5F});
        auto *sign = sv::spawn<Sign>();
        std::thread hands([&] {
            EXPECT_TRUE(server->enterWindow());
            person(*sign);
            server->closeWindow();
        });
        game.run();
        hands.join();
        game.shutDown();
    }

    void tap(const std::string &key) {
        server->pressKey(key);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        server->releaseKey(key);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

    /// When the game stands still.
    static int stepsAtRest(const Sign &sign) {
        int before = -1;
        EXPECT_TRUE(test::waitUntil([&] {
            const int last = std::exchange(before, sign.steps);
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            return last == sign.steps;
        }));
        return sign.steps;
    }

    static std::string textOf(const std::string &file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static sf::Image pictureIn(const std::string &file) {
        const std::string png_end = "IEND\xAE\x42\x60\x82";
        EXPECT_TRUE(test::waitUntil([&] { return textOf(file).ends_with(png_end); }));
        sf::Image image;
        EXPECT_TRUE(image.loadFromFile(file));
        return image;
    }
};

} // namespace

TEST_F(DeskInWindow, its_keys_pause_step_and_take_pictures) {
    run([this](Sign &sign) {
        tap("F5");
        tap("a");
        const int steps = stepsAtRest(sign);
        tap("F6");
        EXPECT_TRUE(test::waitUntil([&] { return sign.steps > steps; }));
        tap("F10");
        const sf::Image plain = pictureIn("selvane-0001.png");
        EXPECT_EQ(test::extentOf(spectral, plain), test::Extent());
        tap("F9");
        tap("F10");
        const sf::Image picture = pictureIn("selvane-0002.png");
        EXPECT_EQ(sign.steps, steps + 1);
        EXPECT_EQ(sign.keys, 0);
        // Cells of 20 by 40 pixels; a box lies around the cell in which a character is drawn.
        const test::Extent box = test::extentOf(spectral, picture);
        EXPECT_EQ(box.left, (20 - 4) * 20 + 8);
        EXPECT_EQ(box.right, (20 + 4) * 20 + 8);
        EXPECT_EQ(box.bottom, (10 + 1) * 40 + 28);
        const int path_row = 10 * 40 + 28;
        EXPECT_EQ(test::extentOf(sf::Color::Magenta, picture),
                  (test::Extent{20 * 20 + 8, path_row, 35 * 20 + 7, path_row}));
        EXPECT_EQ(test::extentOf(sf::Color::Blue, picture), // Half of the view.
                  (test::Extent{10 * 20 + 8, 3 * 40 + 28, 30 * 20 + 8, 9 * 40 + 28}));
        tap("F5");
        EXPECT_TRUE(test::waitUntil([&] { return sign.steps > steps + 5; }));
        tap("a");
        EXPECT_TRUE(test::waitUntil([&] { return sign.keys > 0; }));
    });
    const std::string hi = std::string(10, '\n') + std::string(20, ' ') + "hi\n";
    EXPECT_EQ(textOf("selvane-0001.txt"), hi);
    EXPECT_EQ(textOf("selvane-0002.txt"), hi) << "as if there were no overlay";
}
