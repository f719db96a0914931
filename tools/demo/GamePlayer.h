/// Plays a whole game as a person would: looks at the world once a step, and uses the keys and the
/// mouse through a pair of Hands.
#pragma once

#include "selvane/core/Event.h"
#include "selvane/core/Keyboard.h"
#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace demo {

/// The objects of that class that are in the world.
template<typename Wanted>
std::vector<Wanted *> inWorld(bool include_inactive = false) {
    std::vector<Wanted *> found;
    for (sv::Object *object : sv::WorldManager::getInstance().getAllObjects(include_inactive))
        if (auto *wanted = dynamic_cast<Wanted *>(object))
            found.push_back(wanted);
    return found;
}

/// What a person can do to the game. Positions are cells of the window.
class Hands {
  public:
    virtual ~Hands() = default;
    virtual void pressKey(sv::Keyboard::Key key) = 0;
    virtual void releaseKey(sv::Keyboard::Key key) = 0;
    virtual void moveMouse(sv::Vector to) = 0;
    /// The left button, where the mouse is.
    virtual void pressButton() = 0;
    virtual void releaseButton() = 0;
};

/// What the game shows.
enum class Stage {
    NOTHING,
    SPLASH,
    TITLE,
    LEVEL,
    REMEMBER,
    NUMBER,
    COLOR,
    SHAPE,
    GO,
    SHOOTING,
    WON,
    LOST,
};
const char *nameOf(Stage stage);
/// The key that leads on from that stage, if there is one.
std::optional<sv::Keyboard::Key> keyOn(Stage stage);

/// How a level is played.
enum class Plan {
    RIGHT,      ///< Shoots what must be shot, and submits.
    WRONG_SHOT, ///< Shoots a wrong target too.
    ONE_FEWER,
    ONE_MORE,
    NO_SHOT, ///< Submits at once.
    WAIT,    ///< Lets the time run out.
};
const char *nameOf(Plan plan);
inline void PrintTo(Plan plan, std::ostream *out) {
    *out << nameOf(plan);
}

class GamePlayer {
  public:
    /// Plays the levels before `last_level` right and that one to plan; presses Q if it has won.
    GamePlayer(Hands &new_hands, Plan new_plan, int new_last_level = 3);

    /// Looks and acts. To be called in each step of the game, before it reads its input.
    void step();

    /// Called once in each stage, after `look_steps`, before the player acts.
    std::function<void(Stage stage)> on_sight;
    /// Called with each action, in words, before the player does it.
    std::function<void(const std::string &what)> on_action;
    /// Called in each step before the player acts; returns true to keep it from acting.
    std::function<bool(Stage stage)> instead;

    /// Steps that it looks at a stage before it acts, and that it aims before it shoots.
    int look_steps = 2;
    int aim_steps = 1;

    /// Every stage that it has seen, in order: its name, and after a colon the screen's text.
    const std::vector<std::string> &getStory() const { return story; }

    /// The step in which that stage last began, or -1.
    int stepOf(Stage stage) const;

    /// Whether a stage took too long, so that it ended the game.
    bool isStuck() const { return is_stuck; }

    /// Where to click on the button.
    static sv::Vector aimAtButton();
    /// Clicks that hit exactly that many right targets and nothing else, one after the other, away
    /// from the button's columns; nullopt if there are none.
    static std::optional<std::vector<sv::Vector>> aimAtRight(int count);
    /// A click that hits a wrong target; nullopt if there is none.
    static std::optional<sv::Vector> aimAtWrong();

  private:
    void act(Stage stage);
    void planShots();
    void shoot();
    void press(sv::Keyboard::Key key);
    void report(const std::string &what) const;
    void release();

    Hands &hands;
    Plan plan;
    int last_level;
    std::vector<std::string> story;
    std::map<Stage, int> steps;
    Stage seen = Stage::NOTHING;
    int steps_seen = 0;
    std::optional<sv::Keyboard::Key> held;
    bool is_planned = false;        // The shots of this level.
    std::vector<sv::Vector> clicks; // Still to do, the next one last.
    enum class Aim { MOVE, AIM, PRESSED } aim = Aim::MOVE;
    int aim_started = 0;
    std::size_t targets_before = 0;
    bool is_stuck = false;
};

/// Lets a player play in the game loop. Make it before the engine starts and never delete it: the
/// world does not know it then, so that no level clears it away.
class PlayerInLoop : public sv::Object {
  public:
    explicit PlayerInLoop(GamePlayer &new_player) : player(new_player) {
        registerInterest(sv::STEP_EVENT);
        // The game's objects get the ids that they have without this one, so that the game alone
        // can play a record of it.
        restartIds();
    }

    int eventHandler(const sv::Event * /*p_event*/) override {
        player.step();
        return 1;
    }

  private:
    GamePlayer &player;
};

} // namespace demo
