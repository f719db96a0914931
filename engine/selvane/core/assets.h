/// Where the files of a game are: its configuration, font, sprites, sounds, music, and whatever
/// else it reads. Every file that the engine opens for a game goes through here. Game-loop thread
/// only.
///
/// A name is looked for in the working folder, then in the folder of the program, then in
/// ../share/selvane/PROGRAM from there, where an installed program has its data: a prefix of any
/// name that may be moved as a whole. An absolute name is looked for only where it says.
#pragma once

#include <string>

namespace sv {

/// The path to open for a file of the game. The name itself if it is in the working folder, and if
/// it is nowhere, to be refused by whoever opens it. Any other place is logged at level 1.
std::string findAsset(const std::string &name);

/// The same for a font. Where FONT_FILE_DEFAULT or FALLBACK_FONT_DEFAULT is in none of the folders,
/// the font that the engine was built to use instead serves, if this machine has it.
std::string findFont(const std::string &name);

/// Logs in which folders findAsset() looks, for whoever could not open a file. Does nothing if it
/// is there, or if its name is absolute.
void logSearch(const std::string &name, int level = 0);

} // namespace sv
