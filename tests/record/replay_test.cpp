// Games that are recorded in one session and played again in another one.

#include "selvane/core/Clock.h"
#include "selvane/core/random.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/outside/Outside.h"
#include "selvane/record/Recorder.h"
#include "selvane/record/Replayer.h"
#include "selvane/record/recordSettings.h"
#include "selvane/selvane.h"
#include "selvane/testing/Session.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>

namespace {

using sv::Session;

constexpr int steps = 40;

std::string readFile(const std::string &name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What is done to the game before it is played again.
struct Fault {
    int begin = steps; // The step from which it shows, from 0.
    std::function<void(sv::Object &)> effect = [](sv::Object &) {};
};

/// Turns at random, follows the keys, asks for the time and for paths.
class Walker : public sv::Object {
  public:
    explicit Walker(const Fault &new_fault) : fault(new_fault) {
        setType("Walker");
        setSprite("ball");
        setPosition({40, 12});
        setVelocity({0.25F, 0});
        sv::Shape figure = getShape();
        figure.setColor({0, 1, 2});
        setShape(figure);
        registerInterest(sv::STEP_EVENT);
        registerInterest(sv::KEYBOARD_EVENT);
        registerInterest(sv::TEXT_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (const auto *step = sv::eventCast<sv::EventStep>(p_event))
            takeStep(step->getStepCount());
        else if (const auto *key = sv::eventCast<sv::EventKeyboard>(p_event))
            takeKey(key->getKey());
        else if (const auto *text = sv::eventCast<sv::EventText>(p_event))
            setAltitude(static_cast<int>(text->getCharacter() % 5));
        else
            return sv::Object::eventHandler(p_event);
        return 1;
    }

  private:
    void takeKey(sv::Keyboard::Key key) {
        if (key == sv::Keyboard::Q)
            sv::GameManager::getInstance().setGameOver();
        setPosition(getPosition() + sv::Vector{0, 0.5F});
    }

    void takeStep(int step) {
        if (step % 7 == 3)
            setVelocity({sv::randomFloat(-1, 1), 0.125F});
        if (step % 10 == 5)
            findPath(sv::Vector{2, 3});
        clock.delta();
        if (step == 11)
            setNoSoft(sv::DisplayManager::getInstance().drawCh({1, 1}, '.', sv::WHITE) == 0);
        if (step == 20)
            (new sv::ViewObject)->setValue(static_cast<int>(clock.split() % 1000));
        if (step == 25)
            sv::WorldManager::getInstance().markForDelete(this);
        if (step >= fault.begin)
            fault.effect(*this);
    }

    Fault fault;
    sv::Clock clock;
};

class Replay : public test::EngineTest {
  protected:
    Replay() { writeBall(2); }

    static void writeBall(int slowdown) {
        writeFile("ball.txt", "2\n1\n1\n" + std::to_string(slowdown) + "\nwhite\no\nO\n");
    }

    static int run(const Fault &fault) {
        sv::captureScreen(is_seen);
        sv::GameManager &game = sv::GameManager::getInstance();
        game.startUp();
        sv::ResourceManager::getInstance().loadSprite("ball.txt", "ball");
        sv::spawn<Walker>(fault);
        sv::spawn<Walker>(Fault());
        for (int i = 0; i < 2; ++i) // A game may call run() more than once.
            game.run();
        game.shutDown();
        return 0;
    }

    /// Two runs of that many steps in all, with keys.
    static void record() {
        ASSERT_EQ(sv::Recorder::getInstance().start("record"), 0);
        Session session([] { return run({}); });
        for (int step = 0; step < steps; ++step) {
            session.play();
            session.getTime().now_ms += step % 3;
            if (step % 5 == 0)
                session.tapKey(sv::Keyboard::A);
            if (step == 8)
                session.typeText("\U0001F600");
            if (step == steps - 10)
                session.tapKey(sv::Keyboard::Q);
        }
    }

    /// The game with that fault, but without keys and with another clock; "refused" without a
    /// record.
    static std::string replay(const Fault &fault = {}) {
        std::string verdict = "no verdict";
        const auto at_end = [&](const sv::ReplayVerdict &end) { verdict = end.changes + end.text; };
        if (sv::Replayer::getInstance().start("record", {.at_end = at_end}) != 0)
            return "refused";
        Session session([&] { return run(fault); });
        session.play(10);
        EXPECT_NE(session.screen(), "");
        session.play(steps);
        session.end();
        return verdict;
    }

    inline static bool is_seen = true;
};

TEST_F(Replay, finds_the_first_step_that_differs) {
    record();
    EXPECT_EQ(replay(), "42 steps, all the same");
    struct Row {
        Fault fault;
        std::string verdict;
    };
    const auto waitForTheClock = [](sv::Object &) {
        const sv::Clock clock;
        while (sv::Replayer::getInstance().isReplaying() && clock.split() < 50000) {
        }
    };
    const Row rows[] = {
        {{8, [](sv::Object &o) { o.setSpeed(o.getSpeed() + 0.001F); }},
         "step 9 differs: object 1 (Walker): speed is "},
        {{12, [](sv::Object &o) { o.setAltitude(3); }},
         "step 13 differs: object 1 (Walker): altitude is 3, recorded 2"},
        {{2, [](sv::Object &) { std::rand(); }},
         "step 4 differs: object 1 (Walker): x_direction is "},
        {{6, [](sv::Object &) { new sv::Object; }},
         "step 7 differs: object 3 ((Undefined)) is there, but was not recorded"},
        {{22, [](sv::Object &o) { sv::WorldManager::getInstance().markForDelete(&o); }},
         "step 23 differs: object 1 (Walker) is missing"},
        {{9, waitForTheClock},
         "step 10 differs: it asked for the time more often or less often than recorded"},
        {{14, [](sv::Object &o) { o.setType("Runner"); }},
         "step 15 differs: object 1 (Runner): type is 'Runner', recorded 'Walker'"},
        {{16,
          [](sv::Object &o) {
              sv::Shape shape = o.getShape();
              shape.setColor({0, 1, 3});
              o.setShape(shape);
          }},
         "step 17 differs: object 1 (Walker): color of its figure is 260, recorded 259"},
        {{17, [](sv::Object &) { sv::GameManager::getInstance().setGameOver(); }},
         "step 19 differs: "},
    };
    for (const Row &row : rows)
        EXPECT_EQ(replay(row.fault).substr(0, row.verdict.size()), row.verdict);
}

TEST_F(Replay, games_that_nobody_saw_are_seen) {
    is_seen = false;
    record();
    EXPECT_EQ(replay(), "42 steps, all the same");
    is_seen = true;
}

TEST_F(Replay, tells_what_is_not_as_recorded) {
    record();
    writeBall(3);
    EXPECT_EQ(replay(), "not as recorded: ball.txtstep 2 differs: object 1 (Walker): frame of its "
                        "sprite is 0, recorded 1");
    writeBall(2);
    writeFile("sv-config.txt", "frame_time:50,window_horizontal_chars:20,\n");
    EXPECT_EQ(replay(), "not as recorded: the configuration42 steps, all the same");
}

TEST_F(Replay, damaged_records_play_up_to_there) {
    record();
    const std::string whole = readFile("record");
    for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 50) {
        writeFile("record", whole.substr(0, size));
        const std::string verdict = replay();
        EXPECT_TRUE(verdict == "refused" ||
                    verdict.ends_with("all the same; the record ends there without an end"))
            << size << verdict;
    }
    for (std::size_t at = 0; at < whole.size(); at += 1 + whole.size() / 100) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x41);
        writeFile("record", damaged);
        const std::string verdict = replay();
        EXPECT_TRUE(verdict == "refused" || verdict.ends_with(" is damaged in the record") ||
                    verdict.ends_with("without an end"))
            << at << verdict;
    }
}

TEST_F(Replay, a_handler_begins_and_ends_records) {
    // In the same handler call of a game that was not recorded from its start.
    const auto play = [](const std::function<void()> &begin) {
        Session session;
        session.start();
        sv::spawn<Walker>(Fault{10, [&](sv::Object &o) {
                                    if (o.getAltitude() == 2) {
                                        o.setAltitude(3);
                                        begin();
                                    }
                                }});
        session.play(24);
        return session.screen();
    };
    std::string verdict;
    play([] { EXPECT_EQ(sv::Recorder::getInstance().start("record"), 0); });
    play([&] {
        EXPECT_EQ(
            sv::Replayer::getInstance().start(
                "record", {.last_step = 10,
                           .at_end = [&](const sv::ReplayVerdict &end) { verdict = end.text; }}),
            0);
        EXPECT_EQ(sv::Recorder::getInstance().start("other"), -1);
    });
    EXPECT_EQ(verdict, "10 steps, all the same");

    const auto again = [](int step) {
        EXPECT_EQ(step == 3 ? sv::Replayer::getInstance().start("record") : 0, 0);
    };
    play([=] { sv::Replayer::getInstance().start("record", {.after_step = again}); });

    test::setEnvironment(sv::RECORD_VARIABLE, "whole");
    play([] { EXPECT_EQ(sv::Recorder::getInstance().start("record"), -1); });
}

} // namespace
