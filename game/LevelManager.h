/// The rules: which level it is, what the player has to shoot in it, what was shot so far, and the
/// verdict over that.
///
/// A single instance that lives as long as the process and is never set back: a process plays one
/// game. Game-loop thread only.
#pragma once

#include "game/ShapeKind.h"
#include "selvane/core/Clock.h"
#include "selvane/core/Manager.h"

namespace sv {
class EventMouse;
}
class Button;

class LevelManager : public sv::Manager {
  public:
    static LevelManager &getInstance();
    ~LevelManager() override;

    /// 1 to LAST_LEVEL.
    int getLevel() const { return level; }

    // What the player has to remember. The three are drawn anew for each level, in this order.

    void pickNumber();
    void pickShape();
    void pickColor();
    /// How many targets to shoot.
    int getNumber() const { return number; }
    ShapeKind getShape() const { return shape; }
    ShapeColor getColor() const { return color; }

    /// Shots at what is to be shot, and at anything else, in this level.
    int getHits() const { return hits; }
    int getMisses() const { return misses; }
    void addHit() { ++hits; }
    void addMiss() { ++misses; }

    /// The verdict, if the click is on the button: the next level, the end that is won, or the end
    /// that is lost. Everything that is active then is inactive and on its way out.
    void checkAnswer(Button *p_button, const sv::EventMouse *p_mouse_event);

  private:
    LevelManager();

    void levelUp();
    void win();
    void lose();

    int level = 1;
    int number = 0;
    ShapeKind shape = ShapeKind::CIRCLE;
    ShapeColor color = ShapeColor::RED;
    int hits = 0;
    int misses = 0;
    sv::Clock level_clock; // Set back at each level-up. No rule asks.
};

inline constexpr int LAST_LEVEL = 3;

// Takes objects out of the game: inactive at once and marked for deletion. What is only marked
// lives until the end of the step and would answer one more click.

void retire(sv::Object *object);
void retire(const sv::ObjectList &objects);
