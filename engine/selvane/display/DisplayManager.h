/// Owns the window and draws the world into it as a grid of character cells: each visible thing is
/// characters at cell positions, every character over a cell-sized rectangle of the background.
///
/// Positions are given in world cells; the world's view scrolls the picture. Headless there is no
/// window, and every drawing call returns -1 without a line in the log, unless captureScreen()
/// wants the frames as text. Game-loop thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Manager.h"
#include "selvane/core/Vector.h"

#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace sf {
class CircleShape;
class Font;
class RectangleShape;
class RenderWindow;
class Text;
class Texture;
template<typename T>
class Vector2;
} // namespace sf

namespace sv::platform {
struct Room;
class WindowWatch;
} // namespace sv::platform

namespace sv {

class CellBatch;
class ScreenCapture;

/// Which part of a string stands at the position that it is drawn at.
enum Justification : int {
    LEFT_JUSTIFIED = 0,
    CENTER_JUSTIFIED = 1, ///< The middle; of an even length the character right of it.
    RIGHT_JUSTIFIED = 2,  ///< The cell after the last character.
};

/// The most that a side of the window has, in pixels and in characters: beyond it graphics cards
/// fail, and some windowing systems end the program.
inline constexpr int MAX_WINDOW_SIDE = 16384;

class DisplayManager : public Manager {
  public:
    static DisplayManager &getInstance();
    ~DisplayManager() override;

    /// Draws a character over a rectangle of the background colour. 0, or -1 if nothing was drawn.
    ///
    /// Blank, tab, carriage return and newline draw only the rectangle. A character that the font
    /// lacks shows the font's own sign for that, or a dot if that sign is empty. So do control
    /// characters, and bytes above 127 unless the program's global locale makes letters of them.
    /// With `utf8:true,` such a byte is no character and shows U+FFFD.
    int drawCh(Vector world_pos, char ch, unsigned char r, unsigned char g, unsigned char b);

    /// The same; a `CUSTOM` colour has no components to draw with and shows as white.
    int drawCh(Vector world_pos, char ch, Color color = COLOR_DEFAULT);

    /// The same in any colour, on a background of any colour.
    int drawCh(Vector world_pos, char ch, Rgb color,
               const std::optional<Rgb> &background = std::nullopt);

    /// The same for any character: drawCh({1, 1}, U'☃', sv::CYAN). White by default. A
    /// template, so that a number as in drawCh({1, 1}, '0' + 7) stays a char.
    template<std::same_as<char32_t> Character, std::convertible_to<Rgb> AnyColor = Rgb>
    int drawCh(Vector world_pos, Character ch, AnyColor color = {},
               const std::optional<Rgb> &background = std::nullopt) {
        return drawCell(world_pos, ch, color, background);
    }
    template<std::same_as<char32_t> Character>
    int drawCh(Vector world_pos, Character ch, unsigned char r, unsigned char g, unsigned char b) {
        return drawCell(world_pos, ch, {r, g, b}, std::nullopt);
    }

    /// Draws a string on one line, a cell for each byte, or for each code point with `utf8:true,`.
    /// 0, or -1 if nothing was drawn.
    int drawString(Vector world_pos, const std::string &str, Justification just = LEFT_JUSTIFIED,
                   Color color = COLOR_DEFAULT);

    /// The same in any colour, on a background of any colour.
    int drawString(Vector world_pos, const std::string &str, Justification just, Rgb color,
                   const std::optional<Rgb> &background = std::nullopt);

    /// Shakes the characters, not the rectangles behind them, during the next `steps` frames, by
    /// a random number of pixels on each axis from 1 - scale to 1 + scale. Scales and steps below 0
    /// count as 0, and a scale of 0 moves them by 1.
    void setShake(int new_scale_x, int new_scale_y, int steps);

    /// The window's size in characters: the built-in one before the first start.
    int getHorizontal() const { return window_horizontal_chars; }
    int getVertical() const { return window_vertical_chars; }

    /// The window's size in pixels as configured, which the cells divide.
    int getHorizontalPixels() const { return window_horizontal_pixels; }
    int getVerticalPixels() const { return window_vertical_pixels; }

    /// The pixel of the configured window at which a position of the world is drawn.
    Vector worldToPixels(Vector world_pos) const;

    /// Pixels.
    Vector getCellSize() const { return cell_size; }

    /// The window, with everything drawn so far in it; null headless or while not started. Call it
    /// again before each piece of drawing of your own: characters drawn since the last call are not
    /// in it yet.
    sf::RenderWindow *getWindow();

    /// Saves a picture of the window, with the frame that is shown next: the one that this step
    /// draws or, in a handler of the step event, the one that the step before has drawn. `file`
    /// ends with ".png"; a file of that name is replaced. 0, or -1 with a line in the log if it has
    /// another ending or cannot be written, or if there is no window.
    int saveScreenshot(const std::string &file);

    // Called by the engine.

    /// As getWindow(), for tests and benchmarks, which draw into it until the next character is
    /// drawn, and not under where characters will be.
    sf::RenderWindow *getFlushedWindow();

    /// For its events, and for an Overlay: what was drawn may not be in it yet.
    sf::RenderWindow *getEventWindow() const { return p_window.get(); }

    /// Adds a figure to the frame, if there is a window.
    void addFigure(const sf::CircleShape &figure);

    /// Opens the window and loads the font, both as configured; headless it does neither. 0, or -1
    /// with a line in the log; what was made by then stays until shutDown().
    int startUp() override;

    /// Releases the window and everything that was made for it.
    void shutDown() override;

    /// Shows what was drawn since the last call and clears the window for the next frame. 0, or -1
    /// without a window.
    int swapBuffers();

    /// Whether a held key repeats, in this window and in later ones. Default: it does. The input
    /// manager switches it off while it runs.
    void setKeyRepeat(bool new_key_repeat);

    /// The cell of the world in the window's upper left corner. The world sets it each time that
    /// its view changes, so that drawing need not ask for it.
    void setOrigin(Vector world_corner) { origin = world_corner; }

    /// The cell, with its fraction, at a pixel of the window as it is on the screen. That can be
    /// larger or smaller than configured: the grid is stretched over all of it. Without a window,
    /// one of the configured size is assumed.
    Vector windowToSpaces(int x, int y) const;

    /// Called for each frame before it is shown, to draw over it with an Overlay; null for none.
    void setOverlay(std::function<void()> new_overlay);
    /// Whether frames are kept from now on, without what is drawn over them. Default: false.
    void setFrameKept(bool new_is_frame_kept) { is_frame_kept = new_is_frame_kept; }
    /// Shows the last frame that was kept once more.
    void showAgain();
    /// Whether saveScreenshot() saves the next frame.
    bool isPictureDue() const { return !due_pictures.empty(); }
    /// Whether showing a frame waits for the screen. Default: true.
    void setVerticalSync(bool is_wanted);
    /// Null without a window.
    const sf::Font *getFont() const { return font.get(); }

    /// See captureScreen().
    void setCapture(bool is_wanted);
    /// While a record is played: whether drawing answers as if there were a window, as in the
    /// recorded game. Everything is captured then. Without a value, as things are here.
    void setShownInRecord(std::optional<bool> is_shown);
    /// Null while nothing is captured.
    ScreenCapture *getCapture() const { return capture.get(); }

    void reset() override;

    /// Whether the display, or the window on it, has gone from under the game since the last start.
    bool isLost() const { return is_lost; }

    /// Whether what is drawn now goes anywhere.
    bool isDrawing() const;

  private:
    DisplayManager();

    void takeBuiltInSizes();
    int takeSizes();
    sf::Vector2<unsigned> sizeWithin(platform::Room room) const;
    int openWindow();
    int makeWindow(sf::Vector2<unsigned> size);
    void closeWindow();
    void showFrame();
    static void watchDisplay();
    void noteError(const std::string &what, std::uintptr_t resource);
    [[noreturn]] void loseDisplay();
    static void closeAtExit();
    int prepareCells();
    int loadFallback();
    int drawCell(Vector world_pos, char32_t ch, Rgb color, const std::optional<Rgb> &background);
    template<typename Draw>
    int drawCells(Vector world_pos, const std::string &str, Justification just, Draw draw);
    char32_t characterOf(char byte);
    void warnIfNotUtf8(const std::string &str);
    void shakeCells();
    void presentFrame();
    void keepFrame();
    void savePictures();
    void saveLastPictures();
    bool isHeadless() const;
    bool isUnseen() const;

    // Declared before everything that needs its graphics memory, so it is destroyed last.
    std::unique_ptr<sf::RenderWindow> p_window;
    std::unique_ptr<sf::Font> font;
    std::unique_ptr<sf::Font> fallback;              // For what it lacks; null for none.
    std::unique_ptr<sf::RectangleShape> p_rectangle; // What the background of a cell looks like.
    std::unique_ptr<sf::Text> p_text;                // What the character in a cell looks like.
    std::unique_ptr<CellBatch> cells;
    std::unique_ptr<platform::WindowWatch> watch;
    std::int64_t shown_at = 0; // Microseconds, whatever the game's clock says.
    Vector shown_size;         // Of the window then, in pixels.
    std::unique_ptr<sf::Texture> kept_frame;
    std::unique_ptr<ScreenCapture> capture;
    bool is_capture_wanted = false;
    std::optional<bool> is_shown_in_record;

    int window_horizontal_pixels = 0;
    int window_vertical_pixels = 0;
    int window_horizontal_chars = 0;
    int window_vertical_chars = 0;
    Vector cell_size; // Pixels: the window's divided by its characters.
    Vector origin;
    Color window_background_color = BLACK;
    std::function<void()> overlay;
    std::vector<std::string> due_pictures; // Files.
    bool is_frame_kept = false;
    bool key_repeat = true;
    bool is_lost = false;
    int display_errors = 0;
    std::set<std::size_t> bad_strings; // Hashes of those that were logged.
    int shake_duration = 0;            // Frames.
    int shake_scale_x = 0;             // Pixels, as all that follow.
    int shake_scale_y = 0;
    int shake_x = 0;
    int shake_y = 0;
};

/// The size of a cell in pixels: 12.8 by 32 by default.
float charWidth();
float charHeight();

/// Cells to pixels of the configured window and back.
Vector spacesToPixels(Vector spaces);
Vector pixelsToSpaces(Vector pixels);

} // namespace sv
