#include "selvane/core/Config.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>

namespace sv {

namespace {

/// Calls `apply` with the value of `key`, if it has one.
template<typename Apply>
void load(const std::string &config, const char *key, Apply apply) {
    const std::string value = match(config, key);
    if (!value.empty())
        apply(value);
}

void load(const std::string &config, const char *key, int &setting) {
    load(config, key, [&](const std::string &value) { setting = parseInt(value); });
}

void load(const std::string &config, const char *key, float &setting) {
    load(config, key, [&](const std::string &value) { setting = parseFloat(value); });
}

void load(const std::string &config, const char *key, bool &setting) {
    load(config, key, [&](const std::string &value) { setting = value == "true"; });
}

void load(const std::string &config, const char *key, std::string &setting) {
    load(config, key, [&](const std::string &value) { setting = value; });
}

struct ColorName {
    const char *name;
    Color color;
};

// Yellow's slot is spelt "red", and the red before it wins: no file can ask for a yellow
// background. Files in the field are written to that, so the slot stays as it is.
constexpr std::array<ColorName, 8> background_colors{{{"black", BLACK},
                                                      {"red", RED},
                                                      {"green", GREEN},
                                                      {"red", YELLOW},
                                                      {"blue", BLUE},
                                                      {"magenta", MAGENTA},
                                                      {"cyan", CYAN},
                                                      {"white", WHITE}}};

/// All of the file, or nothing if it is no text: a program, a folder, a file without end.
std::optional<std::string> readText(std::istream &file) {
    std::string text(MAX_CONFIG_BYTES + 1, '\0');
    file.read(text.data(), MAX_CONFIG_BYTES + 1);
    if (file.bad() || file.gcount() > MAX_CONFIG_BYTES)
        return std::nullopt;
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (text.starts_with(BYTE_ORDER_MARK))
        text.erase(0, BYTE_ORDER_MARK.size());
    return text.find('\0') == std::string::npos ? std::optional(text) : std::nullopt;
}

std::string joinedLines(const std::string &text) {
    std::string joined;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (!line.starts_with('#'))
            joined += line;
    }
    return joined;
}

constexpr char ruler[] = "-----------------------------------";

} // namespace

Config &Config::getInstance() {
    static Config &instance = *new Config;
    return instance;
}

std::string Config::readConfig() {
    const char *variable = std::getenv(CONFIG_FILE_VARIABLE);
    const char *name = variable ? variable : CONFIG_FILE_DEFAULT;
    std::ifstream file(name);
    if (!file) {
        // Names the default file whichever was tried: it is the one to create.
        LogManager::getInstance().writeLog(
            1, "Config::readConfig(): Cannot open Selvane configuration file '%s'.",
            CONFIG_FILE_DEFAULT);
        return "";
    }

    if (const auto text = readText(file))
        return joinedLines(*text);
    LogManager::getInstance().writeLog(
        "Config::readConfig(): Warning! '%s' is no text of at most %d bytes. Ignored.", name,
        MAX_CONFIG_BYTES);
    return "";
}

void Config::loadConfig(const std::string &config) {
    const std::string text = config.empty() ? readConfig() : config;
    if (text.empty())
        return; // match() would search whatever it was given last.

    load(text, "frame_time", frame_time);
    load(text, "font_scale", font_scale);
    load(text, "window_horizontal_pixels", window_horizontal_pixels);
    load(text, "window_vertical_pixels", window_vertical_pixels);
    load(text, "window_horizontal_chars", window_horizontal_chars);
    load(text, "window_vertical_chars", window_vertical_chars);
    load(text, "window_background_color",
         [this](const std::string &name) { setWindowBackgroundColor(name); });
    load(text, "window_style", [this](const std::string &name) { setWindowStyle(name); });
    load(text, "window_title", window_title);
    load(text, "show_mouse", show_mouse);
    load(text, "headless", headless);
    load(text, "font_file", font_file);
    load(text, "logfile", log_file);
    load(text, "random_seed", random_seed);
    load(text, "networking", networking);
    load(text, "grid_width", grid_width);
    load(text, "grid_height", grid_height);
    load(text, "quadtree_depth", quadtree_depth);
    load(text, "quadtree_threshold", quadtree_threshold);
}

void Config::setWindowBackgroundColor(const std::string &name) {
    for (const ColorName &candidate : background_colors) {
        if (name == candidate.name) {
            window_background_color = candidate.color;
            return;
        }
    }
    LogManager::getInstance().writeLog("loadConfig(): Unsupported window color '%s'", name.c_str());
}

void Config::setWindowStyle(const std::string &name) {
    if (name == "fullscreen")
        window_style = WINDOW_STYLE_FULLSCREEN;
    else if (name == "default")
        window_style = WINDOW_STYLE_DEFAULT;
    else
        LogManager::getInstance().writeLog("loadConfig(): Unsupported window style '%s'",
                                           name.c_str());
}

void Config::printConfig() const {
    LogManager &log = LogManager::getInstance();
    log.writeLog(1, "%s", ruler);
    log.writeLog(1, "Selvane configuration:");
    log.writeLog(1, "  Window horizontal pixels: %d", window_horizontal_pixels);
    log.writeLog(1, "  Window vertical pixels: %d", window_vertical_pixels);
    log.writeLog(1, "  Window horizontal characters: %d", window_horizontal_chars);
    log.writeLog(1, "  Window vertical characters: %d", window_vertical_chars);
    log.writeLog(1, "  Window background color: %d", int{window_background_color});
    log.writeLog(1, "  Frame time: %d", frame_time);
    log.writeLog(1, "  Window style: %s",
                 window_style == WINDOW_STYLE_DEFAULT ? "default" : "fullscreen");
    log.writeLog(1, "  Window title: %s", window_title.c_str());
    log.writeLog(1, "  Show mouse: %s", boolToString(show_mouse).c_str());
    log.writeLog(1, "  Headless: %s", boolToString(headless).c_str());
    log.writeLog(1, "  Font file: %s", font_file.c_str());
    log.writeLog(1, "  Log file: %s", log_file.c_str());
    log.writeLog(1, "  Random seed: %d", random_seed);
    log.writeLog(1, "  Networking: %s", boolToString(networking).c_str());
    log.writeLog(1, "  Scene graph: simple");
    log.writeLog(1, "%s", ruler);
}

} // namespace sv
