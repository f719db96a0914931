// The desk in sessions, whose clock stands still between steps: ten steps are a third of a second.

#include "selvane/core/Clock.h"
#include "selvane/core/EventKeyboard.h"
#include "selvane/core/EventStep.h"
#include "selvane/record/Recorder.h"
#include "selvane/record/Replayer.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/testing/Session.h"
#include "selvane/world/spawn.h"
#include "support/EngineTest.h"

#include <filesystem>
#include <fstream>

namespace {

using sv::Keyboard;

constexpr char ship[] = "2\n3\n1\n0\nred\n<->\n<=>\n";

/// What it hears, and where it is after so much time of the clock.
class Listener : public sv::Object {
  public:
    Listener() {
        setSolidness(sv::SPECTRAL);
        registerInterest(sv::STEP_EVENT);
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (const auto *key = sv::eventCast<sv::EventKeyboard>(p_event))
            heard += std::to_string(key->getKey()) + "." +
                     std::to_string(key->getKeyboardAction()) + " ";
        if (sv::eventCast<sv::EventStep>(p_event)) {
            ++steps;
            setPosition({static_cast<float>(clock.split()) / 1e6F, 1});
        }
        return 1;
    }

    std::string heard; // Keys and actions.
    int steps = 0;

  private:
    sv::Clock clock;
};

struct DeskTest : test::EngineTest {
    DeskTest() { EXPECT_EQ(session.start(), 0); }

    /// An object that shows the sprite of ship.txt, from its next frame on.
    sv::Object *spawnShip() {
        EXPECT_EQ(sv::ResourceManager::getInstance().loadSprite("ship.txt", "ship"), 0);
        auto *object = sv::spawn<sv::Object>();
        object->setSprite("ship");
        object->setPosition({1, 0});
        return object;
    }

    /// Half a second after a file was saved.
    void expectAfterSaving(const std::string &screen, const std::string &logged) {
        session.play(15);
        EXPECT_EQ(session.screen(), screen) << logged;
        const std::string log = session.log();
        EXPECT_TRUE(log.ends_with(logged + "\n")) << log;
    }

    sv::Session session{{.config = "desk:true,"}};
};

void saveByRenaming(const std::string &text) {
    std::ofstream("ship.new") << text;
    std::filesystem::rename("ship.new", "ship.txt");
}

} // namespace

TEST_F(DeskTest, saved_sprites_are_shown_at_once) {
    writeFile("ship.txt", ship);
    sv::Object *object = spawnShip();
    auto *own_box = sv::spawn<sv::Object>();
    own_box->setSprite("ship");
    own_box->setBox({{0, 0}, 1, 1});
    own_box->setPosition({1, 3});
    sv::Animation frozen = object->getAnimation();
    frozen.setIndex(1);
    frozen.setSlowdownCount(sv::FROZEN);
    for (sv::Object *shown : {object, own_box})
        shown->setAnimation(frozen, false);
    session.play(2);
    EXPECT_EQ(session.screen(), "<=>\n\n\n<=>");

    const std::string anew = "Desk: 'ship.txt' was loaded anew.";
    const std::string stays = " What was loaded before stays.";
    writeFile("ship.txt", "2\n3\n1\n0\nblue\n<o>\n<O>\n");
    expectAfterSaving("<O>\n\n\n<O>", anew);
    EXPECT_EQ(session.colors(), "bbb\n\n\nbbb");
    writeFile("ship.txt", "2\n3\n1\n0\nred\n<*>\n<*->\n");
    expectAfterSaving("<O>\n\n\n<O>", "Desk: Warning! ship.txt:7: Width is 4, expected 3." + stays);
    std::filesystem::remove("ship.txt");
    expectAfterSaving("<O>\n\n\n<O>",
                      "Desk: Warning! ship.txt:1: Cannot open file 'ship.txt'." + stays);
    // Smaller and with one frame less.
    saveByRenaming("1\n1\n1\n0\nred\n*\n");
    expectAfterSaving(" *\n\n\n *", anew);
    EXPECT_EQ(object->getBox(), (sv::Box{{-0.5F, -0.5F}, 1, 1}));
    EXPECT_EQ(own_box->getBox(), (sv::Box{{0, 0}, 1, 1}));
}

TEST_F(DeskTest, files_being_written_are_waited_for) {
    writeFile("ship.txt", ship);
    spawnShip();
    std::string text;
    for (const char *part : {"1\n", "3\n", "1\n", "0\n", "red\n", "<", "x", ">"}) {
        text += part;
        writeFile("ship.txt", text);
        session.play(4); // As long as between two looks.
    }
    expectAfterSaving("<x>", "Desk: 'ship.txt' was loaded anew.");
    EXPECT_EQ(session.log().find("Warning!"), std::string::npos) << session.log();
}

TEST_F(DeskTest, mended_sprites_are_loaded) {
    writeFile("ship.txt", "ship");
    EXPECT_EQ(sv::ResourceManager::getInstance().loadSprite("ship.txt", "ship"), -1);
    writeFile("ship.txt", ship);
    session.play(15);
    EXPECT_NE(sv::ResourceManager::getInstance().getSprite("ship"), nullptr);
}

TEST_F(DeskTest, recorded_games_keep_their_sprites) {
    writeFile("ship.txt", "1\n3\n1\n0\nred\n<->\n");
    spawnShip();
    sv::Recorder::getInstance().start("game.record");
    writeFile("ship.txt", "1\n3\n1\n0\nred\n<o>\n");
    session.play(15);
    EXPECT_EQ(session.screen(), "<->");
    sv::Recorder::getInstance().stop();
    expectAfterSaving("<o>", "Desk: 'ship.txt' was loaded anew.");
}

TEST_F(DeskTest, a_paused_game_takes_single_steps) {
    auto *listener = sv::spawn<Listener>();
    session.pressKey(Keyboard::A);
    session.tapKey(Keyboard::F5);
    session.play();
    const int steps = listener->steps;
    const float time = listener->getPosition().x;
    EXPECT_EQ(listener->heard, "36.0 36.2 ") << "F5 is not heard";
    session.play(10);
    session.tapKey(Keyboard::B);
    session.pressKey(Keyboard::C);
    session.releaseKey(Keyboard::A);
    session.play();
    EXPECT_EQ(listener->steps, steps);
    EXPECT_EQ(listener->heard, "36.0 36.2 ");
    session.pressKey(Keyboard::F6);
    session.play(20);
    EXPECT_EQ(listener->steps, steps + 1);
    EXPECT_EQ(listener->heard, "36.0 36.2 36.1 38.2 ") << "released, and held; F6 is not heard";
    EXPECT_NEAR(listener->getPosition().x - time, 0.033, 1e-3) << "time has stood still";
    session.releaseKey(Keyboard::C);
    session.tapKey(Keyboard::F5);
    session.play(10);
    EXPECT_EQ(listener->steps, steps + 11);
    EXPECT_EQ(listener->heard, "36.0 36.2 36.1 38.2 ");
    session.tapKey(Keyboard::F5);
    session.play(3);
    session.closeWindow();
    session.play(2);
    EXPECT_TRUE(session.hasEnded());
}

TEST_F(DeskTest, slower_games_do_not_notice) {
    auto *listener = sv::spawn<Listener>();
    auto &time = session.getTime();
    for (const auto &[key, real_ms] : {std::pair(Keyboard::F7, 66),
                                       {Keyboard::F7, 132},
                                       {Keyboard::F8, 66},
                                       {Keyboard::F8, 33},
                                       {Keyboard::F8, 16},
                                       {Keyboard::F8, 8},
                                       {Keyboard::F8, 8}}) {
        session.tapKey(key);
        session.play(2);
        const long long before = time.now_ms;
        const float told = listener->getPosition().x;
        session.play(10);
        EXPECT_EQ(time.now_ms - before, 10 * real_ms);
        EXPECT_NEAR(listener->getPosition().x - told, 0.33, 1e-3);
    }
}

TEST_F(DeskTest, records_play_without_it) {
    sv::spawn<Listener>();
    sv::Recorder::getInstance().start("game.record");
    for (const Keyboard::Key key :
         {Keyboard::F7, Keyboard::A, Keyboard::F5, Keyboard::B, Keyboard::F6, Keyboard::F5}) {
        session.tapKey(key);
        session.play(5);
    }
    sv::Recorder::getInstance().stop();
    session.end();

    sv::Session without;
    without.start();
    auto *listener = sv::spawn<Listener>();
    sv::ReplayVerdict verdict;
    sv::Replayer::getInstance().start(
        "game.record", {.at_end = [&](const sv::ReplayVerdict &end) { verdict = end; }});
    without.play(40);
    EXPECT_GT(verdict.steps, 10);
    EXPECT_TRUE(verdict.is_same) << verdict.text;
    EXPECT_EQ(listener->heard, "36.0 36.1 ");
}
