#include "selvane/display/DisplayManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/CellBatch.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/display/SfmlMessages.h"
#include "selvane/display/fontSize.h"
#include "selvane/display/sfmlColor.h"
#include "selvane/platform/display.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Text.hpp>
#include <algorithm>
#include <cstdlib>
#include <new>

namespace sv {

namespace {

constexpr int geometry_log_level = 30;
constexpr unsigned bits_per_pixel = 32;
/// Pixels, and characters as well: beyond it graphics cards fail, and some windowing systems end
/// the program.
constexpr int longest_side = 16384;

template<typename Made, typename... Arguments>
std::unique_ptr<Made> makeIfPossible(Arguments &&...arguments) {
    return std::unique_ptr<Made>(new (std::nothrow) Made(std::forward<Arguments>(arguments)...));
}

bool isSide(int size) {
    return 1 <= size && size <= longest_side;
}

int refuseWindow(const std::string &why) {
    logFailure("DisplayManager::startUp(): Unable to allocate window!");
    return logFailure("DisplayManager::startUp(): Note! %s", why.c_str());
}

/// Exact if both sizes are the same.
float rescaled(int pixel, int configured, unsigned actual) {
    return static_cast<float>(static_cast<double>(pixel) * configured / actual);
}

bool loadFont(sf::Font &font, const std::string &filename) {
    const SfmlMessages messages;
    return font.loadFromFile(filename);
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

int DisplayManager::takeSizes() {
    const Config &config = Config::getInstance();
    const int sizes[] = {config.getWindowHorizontalPixels(), config.getWindowVerticalPixels(),
                         config.getWindowHorizontalChars(), config.getWindowVerticalChars()};
    // Headless as well: cell sizes and random positions are divided by them.
    if (!std::all_of(std::begin(sizes), std::end(sizes), isSide))
        return refuseWindow("Its sides are 1 to " + std::to_string(longest_side) +
                            " long, in pixels and in characters.");
    window_horizontal_pixels = sizes[0];
    window_vertical_pixels = sizes[1];
    window_horizontal_chars = sizes[2];
    window_vertical_chars = sizes[3];
    cell_size = {static_cast<float>(sizes[0]) / static_cast<float>(sizes[2]),
                 static_cast<float>(sizes[1]) / static_cast<float>(sizes[3])};
    setCapture(capture != nullptr);
    return 0;
}

int DisplayManager::openWindow() {
    closeAtExit();
    const Config &config = Config::getInstance();
    const platform::DisplayCheck display;
    if (display.obstacle() != nullptr)
        return refuseWindow(std::string(display.obstacle()) +
                            " To run without one, put headless:true, into the configuration.");
    const sf::VideoMode desktop = sf::VideoMode::getDesktopMode();
    logLine(5, "DisplayManager::startUp(): window resolution (%u, %u) pixels.", desktop.width,
            desktop.height);
    // SFML takes the first mode if the one asked for is missing, and does not check that there is
    // one.
    if (config.getWindowStyle() == WINDOW_STYLE_FULLSCREEN &&
        sf::VideoMode::getFullscreenModes().empty())
        return refuseWindow("The display has no mode for a full screen.");

    const auto width = static_cast<unsigned>(window_horizontal_pixels);
    const auto height = static_cast<unsigned>(window_vertical_pixels);
    const std::string title = config.getWindowTitle();
    p_window = makeIfPossible<sf::RenderWindow>(sf::VideoMode(width, height, bits_per_pixel),
                                                sf::String::fromUtf8(title.begin(), title.end()),
                                                static_cast<sf::Uint32>(config.getWindowStyle()));
    if (!p_window || !p_window->isOpen()) {
        p_window.reset();
        return refuseWindow("The windowing library has written why to standard error.");
    }
    // A window that comes out larger or smaller than asked for still shows the whole grid.
    p_window->setView(sf::View({0, 0, static_cast<float>(window_horizontal_pixels),
                                static_cast<float>(window_vertical_pixels)}));
    p_window->setMouseCursorVisible(config.getShowMouse());
    p_window->setVerticalSyncEnabled(true);
    p_window->setKeyRepeatEnabled(key_repeat);
    return 0;
}

int DisplayManager::prepareCells() {
    const Config &config = Config::getInstance();
    font = makeIfPossible<sf::Font>();
    if (!font || !loadFont(*font, config.getFontFile()))
        return logFailure("DisplayManager::startUp(): Unable to load font from file '%s'.",
                          config.getFontFile().c_str());

    p_rectangle = makeIfPossible<sf::RectangleShape>(sf::Vector2f(charWidth(), charHeight()));
    if (!p_rectangle)
        return logFailure("DisplayManager::startUp(): Unable to allocate rectangle.");

    p_text = makeIfPossible<sf::Text>();
    if (!p_text)
        return logFailure("DisplayManager::startUp(): Unable to allocate text.");
    p_text->setFont(*font);
    p_text->setStyle(sf::Text::Bold);
    p_text->setCharacterSize(characterSize(config.getFontScale()));
    warnIfSizeMisfits(*font, p_text->getCharacterSize());

    window_background_color = config.getWindowBackgroundColor();
    p_rectangle->setFillColor(colorToSFML(window_background_color));
    cells = std::make_unique<CellBatch>(*p_window, *p_rectangle, *p_text);
    return 0;
}

/// So that a full screen gets its old mode back even if the process ends without a shut-down.
void DisplayManager::closeAtExit() {
    static const int registered = std::atexit([] { getInstance().closeWindow(); });
    static_cast<void>(registered);
}

void DisplayManager::closeWindow() {
    // Whatever is in the graphics card's memory is released while the window still exists.
    cells.reset();
    p_text.reset();
    p_rectangle.reset();
    font.reset();
    if (p_window)
        p_window->close();
    p_window.reset();
}

void DisplayManager::shutDown() {
    closeWindow();
    setShake(0, 0, 0);
    shake_x = 0;
    shake_y = 0;
    Manager::shutDown();
    logLine(5, "DisplayManager::shutDown(): successfully stopped.");
}

int DisplayManager::drawCh(Vector world_pos, char ch, Color color) {
    if (isHeadless())
        return -1;
    unsigned char r = 255;
    unsigned char g = 255;
    unsigned char b = 255;
    colorToRGB(color, r, g, b);
    return drawCh(world_pos, ch, r, g, b);
}

int DisplayManager::drawCh(Vector world_pos, char ch, unsigned char r, unsigned char g,
                           unsigned char b) {
    if (!isStarted())
        return refuseUnstarted();
    if (isHeadless() || !isDrawing())
        return -1;
    const Vector pixel = worldToPixels(world_pos);
    if (capture)
        capture->put(world_pos - origin, ch, r, g, b);
    if (!cells)
        return 0;
    const Vector behind{pixel.x - cell_size.x / RECTANGLE_LEFT,
                        pixel.y + cell_size.y / RECTANGLE_DOWN};
    const Vector shake{static_cast<float>(shake_x), static_cast<float>(shake_y)};
    cells->add(behind, pixel + shake, ch, sf::Color(r, g, b));
    return 0;
}

int DisplayManager::drawString(Vector world_pos, const std::string &str, Justification just,
                               Color color) {
    if (!isStarted())
        return refuseUnstarted();
    if (isHeadless())
        return -1;
    std::size_t before = 0; // Characters left of the position.
    if (just == CENTER_JUSTIFIED)
        before = str.length() / 2;
    else if (just == RIGHT_JUSTIFIED)
        before = str.length();
    const Vector pos = world_pos - Vector{static_cast<float>(before), 0};
    for (std::size_t i = 0; i < str.length(); ++i)
        drawCh({pos.x + static_cast<float>(i), pos.y}, str[i], color);
    return 0;
}

int DisplayManager::swapBuffers() {
    if (!isStarted())
        return refuseUnstarted();
    if (isHeadless() || !isDrawing())
        return -1;
    if (capture)
        capture->show();
    if (p_window) {
        cells->flush();
        p_window->display();
        p_window->clear(colorToSFML(window_background_color));
    }
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
    shake_scale_x = std::clamp(new_scale_x, 0, longest_side);
    shake_scale_y = std::clamp(new_scale_y, 0, longest_side);
    shake_duration = std::max(steps, 0);
}

void DisplayManager::setKeyRepeat(bool new_key_repeat) {
    key_repeat = new_key_repeat;
    if (p_window)
        p_window->setKeyRepeatEnabled(key_repeat);
}

sf::RenderWindow *DisplayManager::getWindow() {
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

void DisplayManager::setCapture(bool is_wanted) {
    capture.reset();
    if (is_wanted)
        capture = std::make_unique<ScreenCapture>(window_horizontal_chars, window_vertical_chars);
}

bool DisplayManager::isDrawing() const {
    return p_window || (capture && isStarted());
}

/// As configured, unless the frames are captured.
bool DisplayManager::isHeadless() const {
    return Config::getInstance().getHeadless() && !capture;
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
