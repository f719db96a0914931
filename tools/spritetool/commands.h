/// What selvane-sprite does: each returns its exit status, 0 if all is well, 1 if not.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace sv {
class Sprite;
}

namespace spritetool {

/// The sprite in a file; null, with "FILE:LINE: REASON" on standard error, if it is faulty.
std::unique_ptr<sv::Sprite> read(const std::string &file);

/// Whether all files are sprites.
int check(const std::vector<std::string> &files);

/// Writes a sprite in the format that its file does not have, to a file or to standard output: "".
int convert(const std::string &file, const std::string &to);

/// Writes a sprite to draw in: every character is its transparent one.
int makeNew(const std::string &width, const std::string &height, const std::string &frames);

/// Plays a sprite in the terminal until a key is pressed, or once; elsewhere, writes each frame.
int show(const std::string &file, bool is_once);

} // namespace spritetool
