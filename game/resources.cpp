#include "game/resources.h"

#include "selvane/resources/ResourceManager.h"

namespace {

enum class Kind { SPRITE, SOUND, MUSIC };

struct Resource {
    const char *label;
    Kind kind;
    const char *file;
};

// The tracks of levels 2 and 3 are loaded but never played: every level plays that of level 1. They
// ship with the game, so a missing one is logged like any other file.
constexpr Resource resources[] = {
    {labels::GAME_OVER_SPRITE, Kind::SPRITE, "sprites/gameover-spr.txt"},
    {labels::GAME_START_SPRITE, Kind::SPRITE, "sprites/gamestart-spr.txt"},
    {labels::BUTTON_SPRITE, Kind::SPRITE, "sprites/button-spr.txt"},
    {"square red", Kind::SPRITE, "sprites/square-red-spr.txt"},
    {"triangle red", Kind::SPRITE, "sprites/triangle-red-spr.txt"},
    {"circle red", Kind::SPRITE, "sprites/circle-red-spr.txt"},
    {"square blue", Kind::SPRITE, "sprites/square-blue-spr.txt"},
    {"triangle blue", Kind::SPRITE, "sprites/triangle-blue-spr.txt"},
    {"circle blue", Kind::SPRITE, "sprites/circle-blue-spr.txt"},
    {"square yellow", Kind::SPRITE, "sprites/square-yellow-spr.txt"},
    {"triangle yellow", Kind::SPRITE, "sprites/triangle-yellow-spr.txt"},
    {"circle yellow", Kind::SPRITE, "sprites/circle-yellow-spr.txt"},
    {labels::SHOOT_SOUND, Kind::SOUND, "sounds/shoot.wav"},
    {labels::GAME_OVER_SOUND, Kind::SOUND, "sounds/game-over.wav"},
    {labels::MENU_MUSIC, Kind::MUSIC, "sounds/menus.wav"},
    {labels::LEVEL_UP_SOUND, Kind::SOUND, "sounds/levelup.wav"},
    {labels::LEVEL_MUSIC, Kind::MUSIC, "sounds/background-lv1.wav"},
    {"background lv2", Kind::MUSIC, "sounds/background-lv2.wav"},
    {"background lv3", Kind::MUSIC, "sounds/background-lv3.wav"},
};

void load(const Resource &resource) {
    sv::ResourceManager &manager = sv::ResourceManager::getInstance();
    switch (resource.kind) {
    case Kind::SPRITE:
        manager.loadSprite(resource.file, resource.label);
        break;
    case Kind::SOUND:
        manager.loadSound(resource.file, resource.label);
        break;
    case Kind::MUSIC:
        manager.loadMusic(resource.file, resource.label);
        break;
    }
}

} // namespace

void loadResources() {
    for (const Resource &resource : resources)
        load(resource);
}

void playSound(const char *sound_label) {
    sv::play(sv::ResourceManager::getInstance().getSound(sound_label));
}

void startMusic(const char *music_label) {
    sv::play(sv::ResourceManager::getInstance().getMusic(music_label), true);
}

void stopMusic(const char *music_label) {
    sv::stop(sv::ResourceManager::getInstance().getMusic(music_label));
}
