#include "selvane/display/DisplayManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/core/utf8.h"
#include "selvane/display/CellBatch.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/display/figures.h"
#include "selvane/display/fontSize.h"
#include "selvane/display/sfmlColor.h"
#include "selvane/platform/display.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <algorithm>
#include <cstdlib>
#include <functional>

namespace sv {

namespace {

constexpr int geometry_log_level = 30;
constexpr unsigned char last_of_ascii = 127;
constexpr std::size_t most_bad_strings = 20; // That are logged.

/// Exact if both sizes are the same.
float rescaled(int pixel, int configured, unsigned actual) {
    return static_cast<float>(static_cast<double>(pixel) * configured / actual);
}

int nextShake(int scale) {
    return scale - std::rand() % (scale + 1) * 2 + 1;
}

} // namespace

DisplayManager &DisplayManager::getInstance() {
    static DisplayManager &instance = *new DisplayManager;
    return instance;
}

DisplayManager::DisplayManager() {
    setType("DisplayManager");
    takeBuiltInSizes();
}

DisplayManager::~DisplayManager() = default;

int DisplayManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    if (takeSizes() != 0)
        return -1;
    if (Config::getInstance().getHeadless())
        logLine(1, "DisplayManager::startUp(): not doing graphics since in headless mode.");
    else if (openWindow() != 0 || prepareCells() != 0)
        return -1;
    Manager::startUp();
    logLine(5, "DisplayManager::startUp(): successfully started.");
    return 0;
}

void DisplayManager::shutDown() {
    if (cells && !is_lost)
        saveLastPictures();
    closeWindow();
    bad_strings.clear();
    setShake(0, 0, 0);
    shake_x = 0;
    shake_y = 0;
    Manager::shutDown();
    logLine(5, "DisplayManager::shutDown(): successfully stopped.");
}

int DisplayManager::drawCh(Vector world_pos, char ch, Color color) {
    if (isUnseen())
        return -1;
    unsigned char r = 255;
    unsigned char g = 255;
    unsigned char b = 255;
    colorToRGB(color, r, g, b);
    return drawCh(world_pos, ch, r, g, b);
}

int DisplayManager::drawCh(Vector world_pos, char ch, unsigned char r, unsigned char g,
                           unsigned char b) {
    return drawCell(world_pos, characterOf(ch), {r, g, b}, std::nullopt);
}

int DisplayManager::drawCh(Vector world_pos, char ch, Rgb color,
                           const std::optional<Rgb> &background) {
    return drawCell(world_pos, characterOf(ch), color, background);
}

/// The bytes of keyboards' characters are their code points.
char32_t DisplayManager::characterOf(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    if (number <= last_of_ascii)
        return number;
    return cells && !Config::getInstance().getUtf8() ? cells->ofByte(byte) : REPLACEMENT_CHARACTER;
}

int DisplayManager::drawCell(Vector world_pos, char32_t ch, Rgb color,
                             const std::optional<Rgb> &background) {
    if (!isStarted())
        return refuseUnstarted();
    if (isUnseen() || !isDrawing())
        return -1;
    const Vector pixel = worldToPixels(world_pos);
    if (capture)
        capture->put(world_pos - origin, ch, color);
    if (!cells)
        return isHeadless() ? -1 : 0;
    const Vector behind{pixel.x - cell_size.x / RECTANGLE_LEFT,
                        pixel.y + cell_size.y / RECTANGLE_DOWN};
    const Vector shake{static_cast<float>(shake_x), static_cast<float>(shake_y)};
    CellBatch::Cell &cell = cells->addCell();
    cell.rectangle_pos = behind;
    cell.text_pos = pixel + shake;
    cell.ch = ch;
    cell.color = color;
    cell.has_background = background.has_value();
    if (background)
        cell.background = *background;
    return isHeadless() ? -1 : 0;
}

int DisplayManager::drawString(Vector world_pos, const std::string &str, Justification just,
                               Color color) {
    return drawCells(world_pos, str, just, [&](Vector at, auto ch) { drawCh(at, ch, color); });
}

int DisplayManager::drawString(Vector world_pos, const std::string &str, Justification just,
                               Rgb color, const std::optional<Rgb> &background) {
    return drawCells(world_pos, str, just,
                     [&](Vector at, auto ch) { drawCh(at, ch, color, background); });
}

template<typename Draw>
int DisplayManager::drawCells(Vector world_pos, const std::string &str, Justification just,
                              Draw draw) {
    if (!isStarted())
        return refuseUnstarted();
    if (isUnseen())
        return -1;
    warnIfNotUtf8(str);
    std::size_t before = 0; // Characters left of the position.
    if (just == CENTER_JUSTIFIED)
        before = cellCount(str) / 2;
    else if (just == RIGHT_JUSTIFIED)
        before = cellCount(str);
    const Vector pos = world_pos - Vector{static_cast<float>(before), 0};
    std::size_t i = 0;
    forEachCell(str, [&](auto ch) {
        draw({pos.x + static_cast<float>(i++), pos.y}, ch);
        return true;
    });
    return isHeadless() ? -1 : 0;
}

/// Once for each text that begins alike up to its fault: a label may change its number in every
/// step.
void DisplayManager::warnIfNotUtf8(const std::string &str) {
    if (!Config::getInstance().getUtf8() || bad_strings.size() == most_bad_strings)
        return;
    const std::size_t valid = validUtf8Length(str);
    if (valid == str.size())
        return;
    if (bad_strings.insert(std::hash<std::string>()(str.substr(0, valid + 1))).second)
        logLine("DisplayManager::drawString(): Warning! '%s' is no UTF-8 from byte %d on.",
                printable(toUtf8(fromUtf8(str))).c_str(), static_cast<int>(valid) + 1);
}

int DisplayManager::swapBuffers() {
    if (!isStarted())
        return refuseUnstarted();
    if (isUnseen() || !isDrawing())
        return -1;
    if (capture)
        capture->show();
    if (p_window)
        showFrame();
    if (isHeadless())
        return -1;
    shakeCells();
    return 0;
}

void DisplayManager::shakeCells() {
    const bool is_shaking = shake_duration >= 1;
    shake_x = is_shaking ? nextShake(shake_scale_x) : 0;
    shake_y = is_shaking ? nextShake(shake_scale_y) : 0;
    if (is_shaking)
        --shake_duration;
}

void DisplayManager::setShake(int new_scale_x, int new_scale_y, int steps) {
    shake_scale_x = std::clamp(new_scale_x, 0, MAX_WINDOW_SIDE);
    shake_scale_y = std::clamp(new_scale_y, 0, MAX_WINDOW_SIDE);
    shake_duration = std::max(steps, 0);
}

void DisplayManager::setKeyRepeat(bool new_key_repeat) {
    key_repeat = new_key_repeat;
    if (p_window)
        p_window->setKeyRepeatEnabled(key_repeat);
}

/// A game may keep the window, and draw into it whenever it likes.
sf::RenderWindow *DisplayManager::getWindow() {
    if (cells)
        cells->noteDrawingAnywhere();
    return getFlushedWindow();
}

void DisplayManager::addFigure(const sf::CircleShape &figure) {
    if (cells)
        cells->add(figure);
}

sf::RenderWindow *DisplayManager::getFlushedWindow() {
    if (cells)
        cells->flush();
    return p_window.get();
}

Vector DisplayManager::worldToPixels(Vector world_pos) const {
    return spacesToPixels(world_pos - origin);
}

Vector DisplayManager::windowToSpaces(int x, int y) const {
    const sf::Vector2u size =
        p_window ? p_window->getSize()
                 : sf::Vector2u(sf::Vector2i(window_horizontal_pixels, window_vertical_pixels));
    return pixelsToSpaces({rescaled(x, window_horizontal_pixels, size.x),
                           rescaled(y, window_vertical_pixels, size.y)});
}

void DisplayManager::takeBuiltInSizes() {
    window_horizontal_pixels = 1024;
    window_vertical_pixels = 768;
    window_horizontal_chars = 80;
    window_vertical_chars = 24;
    cell_size = {12.8F, 32};
}

void DisplayManager::reset() {
    takeBuiltInSizes();
    is_lost = false;
    origin = {};
    forgetFigures();
}

void DisplayManager::setCapture(bool is_wanted) {
    is_capture_wanted = is_wanted;
    capture.reset();
    if (is_wanted || is_shown_in_record)
        capture = std::make_unique<ScreenCapture>(window_horizontal_chars, window_vertical_chars);
}

bool DisplayManager::isDrawing() const {
    return p_window || (capture && isStarted());
}

void DisplayManager::setShownInRecord(std::optional<bool> is_shown) {
    is_shown_in_record = is_shown;
    if (!capture || !(is_shown || is_capture_wanted))
        setCapture(is_capture_wanted);
}

/// As configured, or recorded, unless the frames are captured for the game.
bool DisplayManager::isHeadless() const {
    if (is_capture_wanted)
        return false;
    return is_shown_in_record ? !*is_shown_in_record : Config::getInstance().getHeadless();
}

/// Whoever plays a record sees what a headless game draws, though the game is told that nobody
/// does.
bool DisplayManager::isUnseen() const {
    return isHeadless() && !is_shown_in_record;
}

float charWidth() {
    return DisplayManager::getInstance().getCellSize().x;
}

float charHeight() {
    return DisplayManager::getInstance().getCellSize().y;
}

// Both run for every character. They check the log level themselves, because a log call costs more
// than the rest even if nothing is written.

Vector spacesToPixels(Vector spaces) {
    const Vector pixels{spaces.x * charWidth(), spaces.y * charHeight()};
    if (LogManager::getInstance().getLogLevel() >= geometry_log_level)
        logLine(geometry_log_level, "spacesToPixels(int): spaces (%.2f,%.2f) = pixels (%.2f,%.2f)",
                spaces.x, spaces.y, pixels.x, pixels.y);
    return pixels;
}

Vector pixelsToSpaces(Vector pixels) {
    const Vector spaces{pixels.x / charWidth(), pixels.y / charHeight()};
    if (LogManager::getInstance().getLogLevel() >= geometry_log_level)
        logLine(geometry_log_level, "pixelsToSpaces(): pixels (%.2f,%.2f) = spaces (%.2f,%.2f)",
                pixels.x, pixels.y, spaces.x, spaces.y);
    return spaces;
}

} // namespace sv
