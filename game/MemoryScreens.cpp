#include "game/MemoryScreens.h"

#include "game/LevelManager.h"
#include "game/shootingPhase.h"
#include "selvane/core/EventKeyboard.h"
#include "selvane/world/spawn.h"

void setUpText(sv::ViewObject &screen, sv::ViewObjectLocation location, const std::string &text) {
    screen.setLocation(location);
    screen.setViewString(text);
    screen.setDrawValue(false);
    screen.setColor(sv::WHITE);
    screen.registerInterest(sv::KEYBOARD_EVENT);
    screen.setActive(true);
}

MemoryScreen::MemoryScreen(const std::string &text, sv::Keyboard::Key new_key) : key(new_key) {
    setUpText(*this, sv::CENTER_CENTER, text);
    setBorder(false);
}

int MemoryScreen::eventHandler(const sv::Event *p_event) {
    const auto *key_event = sv::eventCast<sv::EventKeyboard>(p_event);
    if (!key_event)
        return 0;
    if (key_event->getKey() == key) {
        showNext();
        setActive(false);
    }
    return 1;
}

LevelScreen::LevelScreen() : MemoryScreen("LEVEL ", sv::Keyboard::S) {
    setValue(LevelManager::getInstance().getLevel());
    setDrawValue(true);
}

void LevelScreen::showNext() {
    sv::spawn<HToContinue>();
    sv::spawn<RememberScreen>();
}

RememberScreen::RememberScreen() : MemoryScreen("REMEMBER TO SHOOT... ", sv::Keyboard::H) {}

void RememberScreen::showNext() {
    sv::spawn<NumScreen>();
    sv::spawn<AToContinue>();
}

NumScreen::NumScreen()
    : MemoryScreen(std::to_string(LevelManager::getInstance().getNumber()), sv::Keyboard::A) {}

void NumScreen::showNext() {
    sv::spawn<ColorScreen>();
    sv::spawn<PToContinue>();
}

ColorScreen::ColorScreen()
    : MemoryScreen(wordOf(LevelManager::getInstance().getColor()), sv::Keyboard::P) {}

void ColorScreen::showNext() {
    sv::spawn<EToContinue>();
    sv::spawn<ShapeScreen>();
}

ShapeScreen::ShapeScreen()
    : MemoryScreen(wordOf(LevelManager::getInstance().getShape()) + "s", sv::Keyboard::E) {}

void ShapeScreen::showNext() {
    sv::spawn<GoScreen>();
    sv::spawn<SpaceToContinue>();
}

GoScreen::GoScreen() : MemoryScreen("GO!", sv::Keyboard::SPACE) {}

void GoScreen::showNext() {
    startShootingPhase();
}

Prompt::Prompt(const std::string &text, sv::Keyboard::Key new_key) : key(new_key) {
    setUpText(*this, sv::BOTTOM_CENTER, text);
}

int Prompt::eventHandler(const sv::Event *p_event) {
    const auto *key_event = sv::eventCast<sv::EventKeyboard>(p_event);
    if (!key_event)
        return 0;
    if (key_event->getKey() == key)
        setActive(false);
    return 1;
}
