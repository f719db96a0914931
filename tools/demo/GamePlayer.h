/// Plays a whole game as a person would: looks at what the world shows, once a step, and uses the
/// keys and the mouse. The hands are given: events made up on the spot, or an X server's.
///
/// To be made before the game is started, and never to be deleted: the world has not heard of it,
/// and so does not take it for a part of a level.
#pragma once

#include "selvane/core/EventKeyboard.h"
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
    for (sv::Object *p_o : sv::WorldManager::getInstance().getAllObjects(include_inactive))
        if (auto *p_wanted = dynamic_cast<Wanted *>(p_o))
            found.push_back(p_wanted);
    return found;
}

/// What a person can do to the game. Positions are cells of the window.
class Hands {
  public:
    virtual ~Hands() = default;
    virtual void pressKey(sv::Keyboard::Key key) = 0;
    virtual void releaseKey(sv::Keyboard::Key key) = 0;
    virtual void moveMouse(sv::Vector to) = 0;
    /// The left one, where the mouse is.
    virtual void pressButton() = 0;
    virtual void releaseButton() = 0;
};

/// Hands for a game without a window: they deliver the events themselves.
class EventHands : public Hands {
  public:
    /// `new_press` is what it makes of the press of a key.
    explicit EventHands(sv::EventKeyboardAction new_press = sv::KEY_PRESSED) : press(new_press) {}

    void pressKey(sv::Keyboard::Key key) override;
    void releaseKey(sv::Keyboard::Key key) override;
    void moveMouse(sv::Vector to) override;
    void pressButton() override;
    void releaseButton() override {} // The engine has no event for it.

  private:
    static void send(sv::Keyboard::Key key, sv::EventKeyboardAction action);

    sv::EventKeyboardAction press;
    sv::Vector mouse;
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
/// The key that leads on from there, if one does.
std::optional<sv::Keyboard::Key> keyOn(Stage stage);

/// How a level is played.
enum class Plan {
    RIGHT,      ///< Shoots what is to be shot, and submits.
    WRONG_SHOT, ///< Shoots one thing too many that is not to be shot.
    ONE_FEWER,
    ONE_MORE,
    NO_SHOT, ///< Submits at once.
    WAIT,    ///< Lets the time run out.
};
const char *nameOf(Plan plan);
inline void PrintTo(Plan plan, std::ostream *out) {
    *out << nameOf(plan);
}

class GamePlayer : public sv::Object {
  public:
    /// Plays the levels up to `last_level` right, and that one to plan; then Q, if it is won.
    GamePlayer(Hands &new_hands, Plan new_plan, int new_last_level = 3);

    int eventHandler(const sv::Event *p_event) override;

    /// Called once in each stage when it has been on the screen for a while, before the player does
    /// something about it.
    std::function<void(Stage stage)> on_sight;
    /// Called with each thing that the player is about to do.
    std::function<void(const std::string &what)> on_action;
    /// Called instead of what the player would do; true if it should do nothing more in this step.
    std::function<bool(Stage stage)> instead;

    /// Steps that it looks at a stage before it acts, and that it aims before it shoots.
    int look_steps = 2;
    int aim_steps = 1;

    /// Every stage that it has seen, in order, by name; with what the screens said behind them.
    const std::vector<std::string> &getStory() const { return story; }

    /// The step in which it first saw that stage last, or -1.
    int stepOf(Stage stage) const;

    /// Whether nothing came of what it did for a long time; it ended the game then.
    bool isStuck() const { return is_stuck; }

    /// The button, where the window shows its columns.
    static sv::Vector aimAtButton();
    /// Where a click shoots exactly that many targets to shoot and no other, as clicks in turn, far
    /// from the button's columns; nothing if there is no such way.
    static std::optional<std::vector<sv::Vector>> aimAtRight(int count);
    /// Where a click shoots something that is not to be shot.
    static std::optional<sv::Vector> aimAtWrong();

  private:
    void act(Stage stage);
    void planShots();
    void shoot();
    void press(sv::Keyboard::Key key);
    void say(const std::string &what) const;
    void letGo();

    Hands &hands;
    Plan plan;
    int last_level;
    std::vector<std::string> story;
    std::map<Stage, int> steps;
    Stage seen = Stage::NOTHING;
    int steps_seen = 0;
    std::optional<sv::Keyboard::Key> held;
    bool is_planned = false;        // The shots of this level.
    std::vector<sv::Vector> clicks; // What is left of them, from the last to the next.
    enum class Aim { MOVE, AIM, PRESSED } aim = Aim::MOVE;
    int aim_started = 0;
    std::size_t targets_before = 0;
    bool is_stuck = false;
};

} // namespace demo
