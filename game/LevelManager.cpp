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

#include <cmath>

namespace {

/// Not the test of the targets. The button answers in its three columns at every height, but for
/// the exact row of its position; and wherever the click's column is, to the last bit, the button's
/// column or its row. The sprite is drawn for that, and the demonstration aims by it.
bool isOnButton(sv::Vector click, sv::Vector button) {
    if (click.x == button.x || click.x == button.y)
        return true;
    return std::abs(click.x - button.x) <= 1.0F && std::abs(click.y - button.y) != 0.0F;
}

/// An end under way goes too, when the button is clicked after the time is up: its going ends the
/// game at once, whatever the verdict. The button by name, since it need not be active.
void clearStage(Button *p_button) {
    retire(sv::WorldManager::getInstance().getAllObjects());
    retire(p_button);
    if (current_timer)
        current_timer->setActive(false);
}

} // namespace

void retire(sv::Object *object) {
    object->setActive(false);
    sv::WorldManager::getInstance().markForDelete(object);
}

void retire(const sv::ObjectList &objects) {
    for (sv::Object *object : objects)
        retire(object);
}

LevelManager &LevelManager::getInstance() {
    static LevelManager instance;
    return instance;
}

LevelManager::LevelManager() {
    // The destructor asks it, so it has to be made first.
    sv::GameManager::getInstance();
    setType("LevelManager");
}

LevelManager::~LevelManager() {
    if (sv::GameManager::getInstance().getGameOver())
        Manager::shutDown();
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

void LevelManager::checkAnswer(Button *p_button, const sv::EventMouse *p_mouse_event) {
    if (!isOnButton(p_mouse_event->getMousePosition(), p_button->getPosition()))
        return;
    clearStage(p_button);
    if (hits != number || misses != 0)
        lose();
    else if (level == LAST_LEVEL)
        win();
    else
        levelUp();
}

/// The music goes on.
void LevelManager::levelUp() {
    level_clock.delta();
    ++level;
    pickNumber();
    pickShape();
    pickColor();
    hits = 0;
    misses = 0;
    new LevelScreen;
    new SToContinue;
}

void LevelManager::win() {
    stopMusic(labels::LEVEL_MUSIC);
    playSound(labels::LEVEL_UP_SOUND);
    new WinScreen;
    new QToQuit;
}

void LevelManager::lose() {
    stopMusic(labels::LEVEL_MUSIC);
    new GameOver;
}
