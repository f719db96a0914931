/// The sounds of a game, from a log of level 5: music that starts and stops as + and -, and sounds
/// as S, in order.
#pragma once

#include <string>
#include <vector>

inline std::string soundsIn(const std::vector<std::string> &log) {
    std::string sounds;
    for (const std::string &line : log) {
        sounds += line.starts_with("Music::play()") ? "+" : "";
        sounds += line.starts_with("Music::stop()") ? "-" : "";
        sounds += line.starts_with("Sound::play()") ? "S" : "";
    }
    return sounds;
}
