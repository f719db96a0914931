#include "selvane/core/Config.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/assets.h"
#include "selvane/core/attributes.h"
#include "selvane/core/configText.h"
#include "selvane/core/text.h"
#include "selvane/outside/Outside.h"
#include "selvane/platform/system.h"

#include <cstdlib>
#include <fstream>
#include <optional>
#include <type_traits>
#include <variant>
#include <vector>

namespace sv {

namespace {

void read(const std::string &value, int &setting) {
    setting = parseInt(value);
}

void read(const std::string &value, float &setting) {
    setting = parseFloat(value);
}

void read(const std::string &value, bool &setting) {
    setting = value == "true";
}

void read(const std::string &value, std::string &setting) {
    setting = value;
}

/// The whole file; nothing if it is not text (a program, a folder) or too long.
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

void logFaults(const std::string &file_name, std::span<const ConfigLine> lines,
               std::span<const SettingName> settings) {
    for (const ConfigFault &fault : configFaults(lines, settings))
        logLine("Config::readConfig(): Warning! %s, line %d: %s", file_name.c_str(), fault.line,
                fault.text.c_str());
}

constexpr char ruler[] = "-----------------------------------";

} // namespace

struct Config::Setting {
    SettingName name;
    std::variant<int Config::*, float Config::*, bool Config::*, std::string Config::*,
                 void (Config::*)(const std::string &)>
        target;
};

/// The log of match() shows this order, so a new setting comes last.
std::span<const Config::Setting> Config::settings() {
    using enum SettingKind;
    static constexpr Setting table[] = {
        {{"frame_time", MILLISECONDS}, &Config::frame_time},
        {{"font_scale", NUMBER}, &Config::font_scale},
        {{"window_horizontal_pixels", INTEGER}, &Config::window_horizontal_pixels},
        {{"window_vertical_pixels", INTEGER}, &Config::window_vertical_pixels},
        {{"window_horizontal_chars", INTEGER}, &Config::window_horizontal_chars},
        {{"window_vertical_chars", INTEGER}, &Config::window_vertical_chars},
        {{"window_background_color", TEXT}, &Config::setWindowBackgroundColor},
        {{"window_style", TEXT}, &Config::setWindowStyle},
        {{"window_title", TEXT}, &Config::window_title},
        {{"show_mouse", FLAG}, &Config::show_mouse},
        {{"headless", FLAG}, &Config::headless},
        {{"font_file", TEXT}, &Config::font_file},
        {{"logfile", TEXT}, &Config::log_file},
        {{"random_seed", INTEGER}, &Config::random_seed},
        {{"networking", FLAG}, &Config::networking},
        {{"grid_width", INTEGER}, &Config::grid_width},
        {{"grid_height", INTEGER}, &Config::grid_height},
        {{"quadtree_depth", INTEGER}, &Config::quadtree_depth},
        {{"quadtree_threshold", INTEGER}, &Config::quadtree_threshold},
        {{"background_input", FLAG}, &Config::background_input},
        {{"record", TEXT}, &Config::record_file},
        {{"scene_graph", TEXT}, &Config::setSceneGraph},
        {{"utf8", FLAG}, &Config::utf8},
        {{"fallback_font", TEXT}, &Config::fallback_font},
        {{"desk", FLAG}, &Config::desk},
    };
    return table;
}

Config &Config::getInstance() {
    static Config &instance = *new Config;
    return instance;
}

std::string Config::readConfig() {
    const char *variable = std::getenv(CONFIG_FILE_VARIABLE);
    const std::string name = variable ? variable : CONFIG_FILE_DEFAULT;
    const std::string path = findAsset(name);
    if (platform::isPipe(path)) {
        logLine("Config::readConfig(): Warning! '%s' is a pipe and no file. Ignored.",
                path.c_str());
        return "";
    }
    std::ifstream file(path);
    if (!file) {
        // Names the default file even if another was tried: it is the one to create.
        logLine(1, "Config::readConfig(): Cannot open Selvane configuration file '%s'.",
                CONFIG_FILE_DEFAULT);
        logSearch(name, 1);
        return "";
    }

    const auto text = readText(file);
    if (!text) {
        logLine("Config::readConfig(): Warning! '%s' is no text of at most %d bytes. Ignored.",
                path.c_str(), MAX_CONFIG_BYTES);
        return "";
    }
    std::vector<SettingName> names;
    for (const Setting &setting : settings())
        names.push_back(setting.name);
    const std::vector<ConfigLine> lines = configLines(*text);
    logFaults(path, lines, names);
    std::string joined;
    for (const ConfigLine &line : lines)
        joined += line.text;
    return joined;
}

void Config::loadConfig(const std::string &config) {
    if (!config.empty()) {
        applyAll(config);
        return;
    }
    Outside &outside = Outside::getInstance();
    const std::string here = readConfig();
    applyAll(outside.askChangeable("the configuration", here));
    applyAll(outside.askText(Channel::CONFIG, forced));
    if (outside.isReplaying()) { // Wherever it was recorded, there may be no window here.
        headless = false;
        for (const std::string &text : {here, forced})
            applyAll("headless:" + attributeValue(text, "headless") + ",");
    }
}

void Config::applyAll(const std::string &text) {
    for (const Setting &setting : settings()) {
        const std::string value = attributeValue(text, std::string(setting.name.key));
        if (!value.empty())
            apply(setting, value);
    }
}

void Config::apply(const Setting &setting, const std::string &value) {
    const auto set = [&](auto target) {
        if constexpr (std::is_member_function_pointer_v<decltype(target)>)
            (this->*target)(value);
        else
            read(value, this->*target);
    };
    std::visit(set, setting.target);
}

void Config::setWindowBackgroundColor(const std::string &name) {
    // Yellow is refused: its place in the list of names was once misspelt, and files in the field
    // are written to that.
    if (const auto color = colorFromName(name); color && color != YELLOW)
        window_background_color = *color;
    else
        logLine("loadConfig(): Unsupported window color '%s'", name.c_str());
}

void Config::setWindowStyle(const std::string &name) {
    if (name == "fullscreen")
        window_style = WINDOW_STYLE_FULLSCREEN;
    else if (name == "default")
        window_style = WINDOW_STYLE_DEFAULT;
    else
        logLine("loadConfig(): Unsupported window style '%s'", name.c_str());
}

void Config::setSceneGraph(const std::string &name) {
    if (name == "grid" || name == "simple")
        grid = name == "grid";
    else
        logLine("loadConfig(): Unsupported scene graph '%s'", name.c_str());
}

void Config::printConfig() const {
    logLine(1, "%s", ruler);
    logLine(1, "Selvane configuration:");
    logLine(1, "  Window horizontal pixels: %d", window_horizontal_pixels);
    logLine(1, "  Window vertical pixels: %d", window_vertical_pixels);
    logLine(1, "  Window horizontal characters: %d", window_horizontal_chars);
    logLine(1, "  Window vertical characters: %d", window_vertical_chars);
    logLine(1, "  Window background color: %d", int{window_background_color});
    logLine(1, "  Frame time: %d", frame_time);
    logLine(1, "  Window style: %s",
            window_style == WINDOW_STYLE_DEFAULT ? "default" : "fullscreen");
    logLine(1, "  Window title: %s", window_title.c_str());
    logLine(1, "  Show mouse: %s", boolToString(show_mouse).c_str());
    logLine(1, "  Headless: %s", boolToString(headless).c_str());
    logLine(1, "  Font file: %s", font_file.c_str());
    logLine(1, "  Log file: %s", log_file.c_str());
    logLine(1, "  Random seed: %d", random_seed);
    logLine(1, "  Networking: %s", boolToString(networking).c_str());
    // Also with a grid: what the log says does not hang on how collisions are found.
    logLine(1, "  Scene graph: simple");
    logLine(1, "%s", ruler);
}

} // namespace sv
