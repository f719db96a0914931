/// The engine's settings: built-in defaults, overwritten by the `key:value,` entries of a file. A
/// missing file is not an error.
///
/// Loaded by the game manager before anything else starts, and read-only afterwards. Game-loop
/// thread only.
#pragma once

#include "selvane/core/Color.h"

#include <span>
#include <string>

namespace sv {

/// Names the configuration file instead of "sv-config.txt".
inline constexpr char CONFIG_FILE_VARIABLE[] = "SELVANE_CONFIG";
inline constexpr char CONFIG_FILE_DEFAULT[] = "sv-config.txt";
inline constexpr char FONT_FILE_DEFAULT[] = "sv-font.ttf";
inline constexpr char FALLBACK_FONT_DEFAULT[] = "sv-fallback-font.ttf";

/// The longest configuration file.
inline constexpr int MAX_CONFIG_BYTES = 65536;

// SFML's numbers for the two styles.
inline constexpr int WINDOW_STYLE_DEFAULT = 5; ///< Title bar and close button, not resizable.
inline constexpr int WINDOW_STYLE_FULLSCREEN = 8;

class Config {
  public:
    static Config &getInstance();

    /// The lines of the configuration file joined with nothing between them, so each setting needs
    /// its comma; without empty lines and those that begin with '#'. Empty if the file cannot be
    /// read, or is not text of at most MAX_CONFIG_BYTES, which is logged. Likely mistakes in the
    /// file are logged with their lines.
    std::string readConfig();

    /// Applies the settings of `config`, or of the file if it is empty. A key that is absent or has
    /// no value leaves its setting unchanged; text that is not a number reads as 0.
    void loadConfig(const std::string &config);

    /// Settings that win over those of the file, whenever it is read from now on.
    void forceConfig(const std::string &config) { forced = config; }

    /// Writes most settings to the log, at level 1.
    void printConfig() const;

    int getWindowHorizontalPixels() const { return window_horizontal_pixels; }
    int getWindowVerticalPixels() const { return window_vertical_pixels; }
    int getWindowHorizontalChars() const { return window_horizontal_chars; }
    int getWindowVerticalChars() const { return window_vertical_chars; }
    /// WINDOW_STYLE_DEFAULT or WINDOW_STYLE_FULLSCREEN.
    int getWindowStyle() const { return window_style; }
    Color getWindowBackgroundColor() const { return window_background_color; }
    /// Milliseconds a step should take; 0 does not wait at all.
    int getFrameTime() const { return frame_time; }
    /// Height of the text in units of the smaller side of a character cell.
    float getFontScale() const { return font_scale; }
    /// UTF-8.
    std::string getWindowTitle() const { return window_title; }
    bool getShowMouse() const { return show_mouse; }
    /// Whether the engine runs without window and input.
    bool getHeadless() const { return headless; }
    std::string getFontFile() const { return font_file; }
    std::string getLogFile() const { return log_file; }
    /// 0 seeds from the current time, -1 not at all.
    int getRandomSeed() const { return random_seed; }
    bool getNetworking() const { return networking; }
    /// Whether held keys and buttons count while another window has the focus.
    bool getBackgroundInput() const { return background_input; }
    /// Whether texts are UTF-8, and a cell is a code point and not a byte.
    bool getUtf8() const { return utf8; }
    /// The font for characters that the first one lacks, with `utf8:true,`.
    std::string getFallbackFont() const { return fallback_font; }
    /// Where the game is recorded; "", the default, is nowhere.
    std::string getRecordFile() const { return record_file; }

    /// Whether the desk is on: docs/desk.md.
    bool getDesk() const { return desk; }

    /// Whether collisions are looked for in the cells of a grid, which gives the same ones faster.
    bool getGrid() const { return grid; }
    /// Into how many columns and rows the world is divided for that, and for searches for paths.
    int getGridWidth() const { return grid_width; }
    int getGridHeight() const { return grid_height; }

    // For other scene graphs; there is none.
    int getQuadtreeThreshold() const { return quadtree_threshold; }
    int getQuadtreeDepth() const { return quadtree_depth; }

  private:
    struct Setting;

    Config() = default;

    static std::span<const Setting> settings();
    void applyAll(const std::string &text);
    void apply(const Setting &setting, const std::string &value);
    void setWindowBackgroundColor(const std::string &name);
    void setWindowStyle(const std::string &name);
    void setSceneGraph(const std::string &name);

    int window_horizontal_pixels = 1024;
    int window_vertical_pixels = 768;
    int window_horizontal_chars = 80;
    int window_vertical_chars = 24;
    int window_style = WINDOW_STYLE_DEFAULT;
    Color window_background_color = BLACK;
    int frame_time = 33;
    float font_scale = 2.0F;
    std::string window_title = "Selvane";
    bool show_mouse = false;
    bool headless = false;
    std::string font_file = FONT_FILE_DEFAULT;
    std::string log_file = "selvane.log";
    int random_seed = 0;
    bool networking = false;
    int quadtree_threshold = 1;
    int quadtree_depth = 10;
    int grid_width = 20;
    int grid_height = 8;
    bool background_input = true;
    std::string record_file;
    bool grid = false;
    bool utf8 = false;
    std::string fallback_font = FALLBACK_FONT_DEFAULT;
    bool desk = false;
    std::string forced;
};

} // namespace sv
