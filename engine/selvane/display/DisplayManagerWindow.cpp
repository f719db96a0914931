// How the display manager's window is opened and closed.

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/assets.h"
#include "selvane/display/CellBatch.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/display/SfmlMessages.h"
#include "selvane/display/fontSize.h"
#include "selvane/display/sfmlColor.h"
#include "selvane/platform/display.h"
#include "selvane/platform/system.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>

namespace sv {

namespace {

constexpr unsigned bits_per_pixel = 32;
constexpr int longest_refresh = 17; // Milliseconds, of a screen with 60 frames a second.
constexpr int most_errors = 20;     // That are logged.

template<typename Made, typename... Arguments>
std::unique_ptr<Made> makeIfPossible(Arguments &&...arguments) {
    return std::unique_ptr<Made>(new (std::nothrow) Made(std::forward<Arguments>(arguments)...));
}

bool isSide(int size) {
    return 1 <= size && size <= MAX_WINDOW_SIDE;
}

int refuseWindow(const std::string &why) {
    logFailure("DisplayManager::startUp(): Unable to allocate window!");
    return logFailure("DisplayManager::startUp(): Note! %s", why.c_str());
}

bool loadFont(sf::Font &font, const std::string &filename) {
    const SfmlMessages messages;
    const std::string path = findFont(filename);
    return !platform::isPipe(path) && font.loadFromFile(path);
}

} // namespace

int DisplayManager::takeSizes() {
    const Config &config = Config::getInstance();
    const int sizes[] = {config.getWindowHorizontalPixels(), config.getWindowVerticalPixels(),
                         config.getWindowHorizontalChars(), config.getWindowVerticalChars()};
    // Headless as well: cell sizes and random positions are divided by them.
    if (!std::all_of(std::begin(sizes), std::end(sizes), isSide))
        return refuseWindow("Its sides are 1 to " + std::to_string(MAX_WINDOW_SIDE) +
                            " long, in pixels and in characters.");
    window_horizontal_pixels = sizes[0];
    window_vertical_pixels = sizes[1];
    window_horizontal_chars = sizes[2];
    window_vertical_chars = sizes[3];
    cell_size = {static_cast<float>(sizes[0]) / static_cast<float>(sizes[2]),
                 static_cast<float>(sizes[1]) / static_cast<float>(sizes[3])};
    setCapture(is_capture_wanted);
    return 0;
}

int DisplayManager::openWindow() {
    closeAtExit();
    watchDisplay();
    const Config &config = Config::getInstance();
    const platform::DisplayCheck display;
    if (display.obstacle())
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

    if (!display.hasLatinLetters())
        logLine(
            "DisplayManager::startUp(): Warning! The keyboard's layout has no Latin letters, so "
            "letter keys do nothing. Put one beside it that has, as in: setxkbmap us,ru");
    if (makeWindow(sizeWithin(display.room())) != 0)
        return -1;
    // A window that comes out larger or smaller than asked for still shows the whole grid.
    p_window->setView(sf::View({0, 0, static_cast<float>(window_horizontal_pixels),
                                static_cast<float>(window_vertical_pixels)}));
    p_window->setMouseCursorVisible(config.getShowMouse());
    p_window->setVerticalSyncEnabled(true);
    p_window->setKeyRepeatEnabled(key_repeat);
    watch = std::make_unique<platform::WindowWatch>(
        reinterpret_cast<std::uintptr_t>(p_window->getSystemHandle()));
    return 0;
}

int DisplayManager::makeWindow(sf::Vector2u size) {
    const Config &config = Config::getInstance();
    const std::string title = config.getWindowTitle();
    p_window = makeIfPossible<sf::RenderWindow>(sf::VideoMode(size.x, size.y, bits_per_pixel),
                                                sf::String::fromUtf8(title.begin(), title.end()),
                                                static_cast<sf::Uint32>(config.getWindowStyle()));
    if (!p_window || !p_window->isOpen()) {
        p_window.reset();
        return refuseWindow("The windowing library has written why to standard error.");
    }
    if (!p_window->setActive()) {
        p_window.reset();
        return refuseWindow(
            "The display gives the window no OpenGL. It may lack memory: close other "
            "programs, or start the X server with more.");
    }
    return 0;
}

/// The configured size, or one of the same proportions that the screen has room for. A full screen
/// has its own.
sf::Vector2u DisplayManager::sizeWithin(platform::Room room) const {
    const sf::Vector2u configured(sf::Vector2i(window_horizontal_pixels, window_vertical_pixels));
    const float scale =
        std::min(static_cast<float>(room.width) / static_cast<float>(configured.x),
                 static_cast<float>(room.height) / static_cast<float>(configured.y));
    if (scale >= 1 || scale <= 0 ||
        Config::getInstance().getWindowStyle() == WINDOW_STYLE_FULLSCREEN)
        return configured;
    const auto scaled = [=](unsigned side) {
        return std::max(1U, static_cast<unsigned>(std::lround(static_cast<float>(side) * scale)));
    };
    const sf::Vector2u shown(scaled(configured.x), scaled(configured.y));
    logLine("DisplayManager::startUp(): Note! The screen has no room for a window of %u x %u "
            "pixels. It is shown smaller, with %u x %u.",
            configured.x, configured.y, shown.x, shown.y);
    return shown;
}

int DisplayManager::prepareCells() {
    const Config &config = Config::getInstance();
    font = makeIfPossible<sf::Font>();
    const std::string font_file = config.getFontFile();
    if (!font || !loadFont(*font, font_file)) {
        logFailure("DisplayManager::startUp(): Unable to load font from file '%s'.",
                   font_file.c_str());
        logSearch(font_file);
        return -1;
    }

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
    if (loadFallback() != 0)
        return -1;

    window_background_color = config.getWindowBackgroundColor();
    p_rectangle->setFillColor(colorToSFML(window_background_color));
    cells = std::make_unique<CellBatch>(*p_window, *p_rectangle, *p_text, fallback.get());
    return 0;
}

/// The usual one need not be there, but one that the configuration names must.
int DisplayManager::loadFallback() {
    const Config &config = Config::getInstance();
    if (!config.getUtf8())
        return 0;
    const std::string name = config.getFallbackFont();
    if (name == FALLBACK_FONT_DEFAULT && !platform::isFile(findFont(name)))
        return 0;
    fallback = makeIfPossible<sf::Font>();
    if (fallback && loadFont(*fallback, name))
        return 0;
    logFailure("DisplayManager::startUp(): Unable to load font from file '%s'.", name.c_str());
    logSearch(name);
    return -1;
}

/// A frame that is the same as the last is not drawn, unless the window may show something else by
/// now. Where frames may come faster than the screen shows them, each waits for the screen.
void DisplayManager::showFrame() {
    constexpr std::int64_t second = 1'000'000;
    const std::int64_t now = platform::systemTimeSource().steadyTime();
    const sf::Vector2u size = p_window->getSize();
    const bool is_disturbed =
        watch->isUncovered() ||
        shown_size != Vector{static_cast<float>(size.x), static_cast<float>(size.y)};
    const bool is_fast = Config::getInstance().getFrameTime() < longest_refresh;
    const bool is_wanted = is_fast || overlay || is_frame_kept || isPictureDue();
    if (!cells->endFrame(is_disturbed || is_wanted || now - shown_at >= second))
        return;
    if (is_frame_kept)
        keepFrame();
    presentFrame();
    shown_at = now;
    shown_size = {static_cast<float>(size.x), static_cast<float>(size.y)};
}

void DisplayManager::watchDisplay() {
    getInstance().is_lost = false;
    getInstance().display_errors = 0;
    platform::watchDisplay(
        {.on_error = [](const std::string &what,
                        std::uintptr_t resource) { getInstance().noteError(what, resource); },
         .on_loss = [] { getInstance().loseDisplay(); }});
}

/// Without its window the game ends with the step.
void DisplayManager::noteError(const std::string &what, std::uintptr_t resource) {
    if (display_errors++ < most_errors)
        logLine("DisplayManager: Warning! The display says: %s.", what.c_str());
    if (is_lost || !p_window ||
        resource != reinterpret_cast<std::uintptr_t>(p_window->getSystemHandle()))
        return;
    is_lost = true;
    logFailure("DisplayManager: Error! The window has gone, and the game ends.");
}

/// What was made for the window is left as it is: releasing it would ask the display.
void DisplayManager::loseDisplay() {
    static_cast<void>(kept_frame.release());
    static_cast<void>(cells.release());
    static_cast<void>(p_text.release());
    static_cast<void>(fallback.release());
    static_cast<void>(font.release());
    static_cast<void>(p_window.release());
    static_cast<void>(watch.release());
    is_lost = true;
    logFailure("DisplayManager: Error! The display has gone, and the game ends.");
    std::exit(platform::display_lost_status);
}

/// So that a full screen gets its old mode back even if the process ends without a shut-down.
void DisplayManager::closeAtExit() {
    static const int registered = std::atexit([] { getInstance().closeWindow(); });
    static_cast<void>(registered);
}

void DisplayManager::closeWindow() {
    // Whatever is in the graphics card's memory is released while the window still exists.
    due_pictures.clear();
    kept_frame.reset();
    cells.reset();
    p_text.reset();
    p_rectangle.reset();
    fallback.reset();
    font.reset();
    watch.reset();
    if (p_window)
        p_window->close();
    p_window.reset();
}

} // namespace sv
