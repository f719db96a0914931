/// The rules: the level, what the player has to shoot in it, the shots so far, and the verdict.
///
/// A single instance that lives as long as the process. Only a test's sv::Session puts it back for
/// the next game: otherwise a process plays one. Game-loop thread only.
#pragma once

#include "game/ShapeKind.h"
#include "selvane/core/Clock.h"
#include "selvane/core/Manager.h"

namespace sv {
class EventMouse;
class Object;
} // namespace sv
class Button;

class LevelManager : public sv::Manager {
  public:
    static LevelManager &getInstance();
    ~LevelManager() override;

    /// 1 to LAST_LEVEL.
    int getLevel() const { return level; }

    // What the player has to remember: drawn at random for each level, in this order.

    void pickNumber();
    void pickShape();
    void pickColor();
    /// How many targets to shoot.
    int getNumber() const { return number; }
    ShapeKind getShape() const { return shape; }
    ShapeColor getColor() const { return color; }

    /// Right and wrong shots in this level.
    int getHits() const { return hits; }
    int getMisses() const { return misses; }
    void addHit() { ++hits; }
    void addMiss() { ++misses; }

    /// If the click is on the button, takes the verdict: the next level, the game won, or the game
    /// lost. Everything that was active is retired.
    void checkAnswer(Button *button, const sv::EventMouse *mouse_event);

    // Called by the engine.

    void reset() override;

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
    sv::Clock level_clock; // Reset at each level-up. No rule reads it.
};

inline constexpr int LAST_LEVEL = 3;
