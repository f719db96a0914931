#include "game/GameStart.h"

#include "game/LevelManager.h"
#include "game/MemoryScreens.h"
#include "game/inputReading.h"
#include "game/resources.h"
#include "selvane/core/Event.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/ResourceManager.h"

GameStart::GameStart() {
    setType("GameStart");
    setSprite(labels::GAME_START_SPRITE);
    setLocation(sv::CENTER_CENTER);
    registerInterest(sv::KEYBOARD_EVENT);
    music = sv::ResourceManager::getInstance().getMusic(labels::MENU_MUSIC);
    sv::play(music, true);
}

int GameStart::eventHandler(const sv::Event *p_event) {
    const auto key = keyOf(p_event);
    if (!key)
        return 0;
    if (*key == sv::Keyboard::P)
        startGame();
    else if (*key == sv::Keyboard::Q)
        sv::GameManager::getInstance().setGameOver();
    return 1;
}

void GameStart::startGame() {
    sv::stop(music);
    startMusic(labels::LEVEL_MUSIC);
    LevelManager &level_manager = LevelManager::getInstance();
    level_manager.pickNumber();
    level_manager.pickShape();
    level_manager.pickColor();
    new LevelScreen;
    new SToContinue;
    setActive(false);
}
