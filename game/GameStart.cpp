#include "game/GameStart.h"

#include "game/LevelManager.h"
#include "game/MemoryScreens.h"
#include "game/resources.h"
#include "selvane/core/EventKeyboard.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/spawn.h"

GameStart::GameStart() {
    setType("GameStart");
    setSprite(labels::GAME_START_SPRITE);
    setLocation(sv::CENTER_CENTER);
    registerInterest(sv::KEYBOARD_EVENT);
    music = sv::ResourceManager::getInstance().getMusic(labels::MENU_MUSIC);
    sv::play(music, true);
}

int GameStart::eventHandler(const sv::Event *p_event) {
    const auto *key_event = sv::eventCast<sv::EventKeyboard>(p_event);
    if (!key_event)
        return 0;
    if (key_event->getKey() == sv::Keyboard::P)
        startGame();
    else if (key_event->getKey() == sv::Keyboard::Q)
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
    sv::spawn<LevelScreen>();
    sv::spawn<SToContinue>();
    setActive(false);
}
