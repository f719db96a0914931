/// The game's pictures and sounds, by label. Their files are in "sprites/" and "sounds/" of the
/// working folder.
#pragma once

namespace labels {

inline constexpr char GAME_OVER_SPRITE[] = "gameover";
inline constexpr char GAME_START_SPRITE[] = "gamestart";
inline constexpr char BUTTON_SPRITE[] = "button";
// The sprites of the targets have two words: "square red".

inline constexpr char SHOOT_SOUND[] = "shoot";
inline constexpr char GAME_OVER_SOUND[] = "game over";
inline constexpr char LEVEL_UP_SOUND[] = "levelup";
inline constexpr char MENU_MUSIC[] = "menus";
inline constexpr char LEVEL_MUSIC[] = "background lv1";

} // namespace labels

/// Loads all of them. A missing or broken file is logged, and the game goes on without it.
void loadResources();

// Nothing happens if nothing is loaded under the label.
void playSound(const char *sound_label);
void startMusic(const char *music_label);
void stopMusic(const char *music_label);
