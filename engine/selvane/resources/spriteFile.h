/// What both sprite file formats share: how lines, tagged sections, keyed values and the rows of a
/// frame are read, and how a sprite is made of them.
///
/// A file's numbers are only claims: nothing here allocates memory for more than the file holds.
/// Game-loop thread only: the line counter is shared.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/platform/printfFormat.h"
#include "selvane/resources/Sprite.h"

#include <deque>
#include <istream>
#include <memory>
#include <stdexcept>
#include <string>

namespace sv {

struct Line {
    std::string text;
    int number; ///< Its place in the file, from 1.
};

/// Lines of a section in their order; used ones are removed from the front and the middle.
using Lines = std::deque<Line>;

/// Thrown for a line that is only a key. what() names the line and the key.
class KeyWithoutValue : public std::out_of_range {
  public:
    using std::out_of_range::out_of_range;
};

/// The largest file that is read. While it is read it takes about twenty times as much memory.
inline constexpr int MAX_SPRITE_BYTES = 16 * 1024 * 1024;

/// The line that ends a frame.
inline constexpr char FRAME_END[] = "end";

/// Lines of the file that were counted so far, for messages. Set it to 0 before each file.
extern int line_number;

/// What is wrong with a file, for whoever edits it.
struct SpriteFault {
    int line = 1;       ///< Where it is. The numbers in the log may be off: see readFrame().
    std::string reason; ///< In the words of the log; empty if nothing is wrong.
};

/// The first fault of the file that was read last.
extern SpriteFault sprite_fault;

/// Notes a fault, unless there is one.
void noteFault(int line, const std::string &reason);

/// As logLine(), and notes the message without what stands before its reason.
void logFault(int line, const char *fmt, ...) SV_PRINTF_FORMAT(2, 3);

/// The next line without its end, LF or CR LF; counted in line_number if `count_line`. At the end
/// of the stream it logs an unexpected end and returns an empty text.
std::string getLine(std::istream &file, bool count_line);

/// The lines between "<NAME>" and "</NAME>". Empty, with a log line, if the next line is not the
/// opening tag, or if an empty line or the end of the file comes before the closing one. So a
/// section without lines looks like a failed one.
Lines readData(std::istream &file, const std::string &delimiter);

/// The integer behind a key: of each line that begins with `token`, the text from the second
/// character after it. Removes the lines from the list; the last one counts. -1 if there is none.
///
/// Throws KeyWithoutValue for a line that is only the key: the caller that knows the file's name
/// reports it.
int matchLineInt(Lines *lines, const char *token);

/// The text behind a key, as matchLineInt; empty if there is none.
std::string matchLineStr(Lines *lines, const char *token);

/// Where the key stands that matchLineInt() would read; if there is none, where the section ends.
int lineOf(const Lines &lines, const char *token);

/// Removes one frame from the front of the list: `height` rows of `width` characters and a line
/// "end". Returns the empty frame, with log lines, if there is something else. `first_line` is for
/// the messages, which count rows only.
Frame readFrame(Lines *lines, int width, int height, int first_line);

struct SpriteHeader {
    int frames = 0;
    int frames_line = 1;
    int width = 0;
    int height = 0;
    int slowdown = 0;
    char transparency = NO_TRANSPARENCY;
    Color color = COLOR_DEFAULT;
    std::string color_name;
    int color_line = 1;
};

/// What differs between the log lines of the two formats, down to a full stop. Logs are compared
/// line by line, so these must not change.
struct SpriteFormat {
    const char *loader;     ///< Begins each message.
    const char *last_color; ///< Ends the list of valid colours.
    const char *line_end;   ///< Ends the message about a frame that does not fit.
};

/// Logs what both formats log of a header, at level 5.
void logHeader(const SpriteHeader &header);

/// Logs the colours that a file may name.
void logValidColors(const SpriteFormat &format);

/// A sprite as the header describes it, still without frames; null, with log lines, if the number
/// of frames is impossible.
std::unique_ptr<Sprite> createSprite(const SpriteHeader &header, const SpriteFormat &format);

/// Appends a frame; false, with log lines, if the sprite has no room or no memory for it.
bool addFrame(Sprite &sprite, const Frame &frame, const SpriteFormat &format);

} // namespace sv
