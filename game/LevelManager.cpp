#include "game/LevelManager.h"

#include "game/Button.h"
#include "game/GameOver.h"
#include "game/MemoryScreens.h"
#include "game/Timer.h"
#include "game/WinScreen.h"
#include "game/random.h"
#include "game/resources.h"
#include "selvane/core/EventMouse.h"
#include "selvane/loop/GameManager.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <cmath>

namespace {

/// Unlike the targets' test. The button answers in its three columns at any height except exactly
/// its own row, and wherever the click's column is exactly equal to the button's column or to its
/// row. The sprite is drawn to fit this, and the demo aims by it.
bool isOnButton(sv::Vector click, sv::Vector button) {
    if (click.x == button.x || click.x == button.y)
        return true;
    return std::abs(click.x - button.x) <= 1.0F && std::abs(click.y - button.y) != 0.0F;
}

/// If the button is clicked after the time is up, the running GameOver is deleted too, which ends
/// the game at once, whatever the verdict. The button is retired by name because it may be
/// inactive.
void clearStage(Button *button) {
    sv::WorldManager &world = sv::WorldManager::getInstance();
    for (sv::Object *object : world.getAllObjects())
        world.retire(object);
    world.retire(button);
    if (current_timer)
        current_timer->setActive(false);
}

} // namespace

LevelManager &LevelManager::getInstance() {
    static LevelManager instance;
    return instance;
}

LevelManager::LevelManager() {
    // The destructor uses it, so it must be constructed first.
    sv::GameManager::getInstance();
    setType("LevelManager");
}

LevelManager::~LevelManager() {
    if (sv::GameManager::getInstance().getGameOver())
        Manager::shutDown();
}

void LevelManager::reset() {
    if (isStarted())
        shutDown();
    level = 1;
    number = 0;
    shape = ShapeKind::CIRCLE;
    color = ShapeColor::RED;
    hits = 0;
    misses = 0;
}

void LevelManager::pickNumber() {
    if (level >= 1 && level <= LAST_LEVEL)
        number = 2 * level + randomBelow(2);
}

void LevelManager::pickShape() {
    shape = randomShapeKind();
}

void LevelManager::pickColor() {
    color = randomShapeColor();
}

void LevelManager::checkAnswer(Button *button, const sv::EventMouse *mouse_event) {
    if (!isOnButton(mouse_event->getMousePosition(), button->getPosition()))
        return;
    clearStage(button);
    if (hits != number || misses != 0)
        lose();
    else if (level == LAST_LEVEL)
        win();
    else
        levelUp();
}

void LevelManager::levelUp() {
    // The music goes on.
    level_clock.delta();
    ++level;
    pickNumber();
    pickShape();
    pickColor();
    hits = 0;
    misses = 0;
    sv::spawn<LevelScreen>();
    sv::spawn<SToContinue>();
}

void LevelManager::win() {
    stopMusic(labels::LEVEL_MUSIC);
    playSound(labels::LEVEL_UP_SOUND);
    sv::spawn<WinScreen>();
    sv::spawn<QToQuit>();
}

void LevelManager::lose() {
    stopMusic(labels::LEVEL_MUSIC);
    sv::spawn<GameOver>();
}
