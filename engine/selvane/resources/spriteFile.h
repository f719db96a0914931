/// What both sprite file formats are read with: lines, tagged sections, keyed values, colour names
/// and the rows of a frame.
///
/// A file's numbers are claims: nothing here takes memory for more than the file really holds.
/// Game-loop thread only: the count of lines is shared.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/resources/Frame.h"

#include <deque>
#include <istream>
#include <optional>
#include <stdexcept>
#include <string>

namespace sv {

struct Line {
    std::string text;
    int number; ///< Its place in the file, from 1.
};

/// Lines of a section in their order, taken away from the front and the middle as they are used.
using Lines = std::deque<Line>;

/// A line is a key and nothing more. what() names the line and the key.
class KeyWithoutValue : public std::out_of_range {
  public:
    using std::out_of_range::out_of_range;
};

/// The largest file that is read: its lines take some twenty times as much while they are sorted.
inline constexpr int MAX_SPRITE_BYTES = 16 * 1024 * 1024;

/// Lines of the file that were counted so far, for messages. Whoever begins a file sets it to 0.
extern int line_number;

/// The next line without its end, LF or CR LF; counted in line_number if `count_line`. A stream
/// that has nothing more to give is logged as an unexpected end and gives an empty text.
std::string getLine(std::istream &file, bool count_line);

/// The lines between "<NAME>" and "</NAME>". Empty, with a log line, if the next line is not the
/// opening tag or if an empty line or the file's end comes before the closing one; so a section
/// without lines looks like a failed one.
Lines readData(std::istream &file, const std::string &delimiter);

/// The integer behind a key: of each line that begins with `token` the text from the second
/// character behind it. The lines are taken out of the list and the last one wins; -1 if there is
/// none.
///
/// Throws KeyWithoutValue for a line that is the key and nothing more, for whoever loads the file
/// to report: only there is the file's name known.
int matchLineInt(Lines *p_lines, const char *token);

/// The text behind a key, as matchLineInt; empty if there is none.
std::string matchLineStr(Lines *p_lines, const char *token);

/// Takes one frame from the front of the list: `height` rows of `width` characters and a line
/// "end". The empty frame, with log lines, if that is not what stands there. `first_line` is for
/// the messages.
Frame readFrame(Lines *p_lines, int width, int height, int first_line);

/// The colour of a lower-case name, "black" to "white".
std::optional<Color> colorFromName(const std::string &name);

} // namespace sv
