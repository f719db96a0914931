// A configuration file, from the text to a game that starts with it, makes a step, and stops; and
// the search for a key in a text.

#include "fuzzing.h"
#include "selvane/core/Config.h"
#include "selvane/core/EventStep.h"
#include "selvane/core/text.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/record/recordSettings.h"
#include "selvane/world/Object.h"

#include <fstream>

namespace {

// Settings outlive the input that made them; without these, what an input does would hang on those
// before it.
constexpr char defaults[] =
    "frame_time:33,font_scale:2,window_horizontal_pixels:1024,window_vertical_pixels:768,"
    "window_horizontal_chars:80,window_vertical_chars:24,window_background_color:black,"
    "window_style:default,window_title:Selvane,show_mouse:false,headless:true,"
    "font_file:sv-font.ttf,logfile:selvane.log,random_seed:0,networking:false,"
    "grid_width:20,grid_height:8,quadtree_depth:10,quadtree_threshold:1,background_input:true,"
    "scene_graph:simple,";

class OneStep : public sv::Object {
  public:
    OneStep() { registerInterest(sv::STEP_EVENT); }

    int eventHandler(const sv::Event * /*p_event*/) override {
        sv::GameManager::getInstance().setGameOver();
        return 1;
    }
};

void search(const std::string &text) {
    const std::string key = text.substr(0, text.find(':'));
    const std::string value = sv::match(text, key);
    fuzz::require(value.find_first_of(" \t\n\v\f\r,:") == std::string::npos);
    fuzz::require(text.empty() || sv::match("", key) == value);
    sv::parseInt(text);
    sv::parseFloat(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Input input(data, size);
    search(input.text);

    // Of equal keys the first one holds: no input opens a window.
    std::ofstream(sv::CONFIG_FILE_DEFAULT, std::ios::binary) << "headless:true,\n" << input.text;
    sv::Config::getInstance().loadConfig(defaults);
    const sv::ManualTime time;
    sv::GameManager &game = sv::GameManager::getInstance();
    // The game starts the log itself, and what it says before goes to standard error.
    sv::LogManager::getInstance().setLogLevel(1);
    sv::LogManager::getInstance().shutDown();
    if (game.startUp() == 0) {
        new OneStep;
        game.run();
    }
    game.shutDown();
    sv::resetRecords();
    return 0;
}
