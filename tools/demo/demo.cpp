// Plays the game without a person, in a real window on an X server of its own, and saves a picture
// of every screen, and a film for terminals, demo.cast.
//   selvane_demo FOLDER [lose]
// Start it in the folder that the game runs in. The exit status is 0 if the game ended as planned.

#include "demo/GamePlayer.h"
#include "demo/XHands.h"
#include "demo/XServer.h"
#include "game/LevelManager.h"
#include "game/playGame.h"
#include "selvane/core/Config.h"
#include "selvane/core/EventStep.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/loop/GameManager.h"
#include "selvane/record/Cast.h"
#include "selvane/world/Object.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <cstring>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace {

// The step in which all parts of the title sequence have arrived.
constexpr int splash_steps = 75;

class Album {
  public:
    explicit Album(std::filesystem::path new_folder) : folder(std::move(new_folder)) {}

    void add(const std::string &name) {
        ++count;
        std::ostringstream file_name;
        file_name << std::setw(2) << std::setfill('0') << count << "-" << name << ".png";
        if (!save(folder / file_name.str()))
            is_complete = false;
    }

    bool isComplete() const { return is_complete; }
    int getCount() const { return count; }

  private:
    static bool save(const std::filesystem::path &file) {
        sf::RenderWindow *window = sv::DisplayManager::getInstance().getWindow();
        sf::Texture texture;
        if (!window || !texture.create(window->getSize().x, window->getSize().y))
            return false;
        texture.update(*window);
        return texture.copyToImage().saveToFile(file.string());
    }

    std::filesystem::path folder;
    int count = 0;
    bool is_complete = true;
};

/// Saves a picture of every screen, and prints what the player does.
/// REQUIRES: the arguments live as long as the game.
void document(demo::GamePlayer &player, demo::XServer &server, Album &album) {
    player.on_sight = [&album](demo::Stage stage) {
        if (stage != demo::Stage::SPLASH)
            album.add(nameOf(stage));
    };
    player.on_action = [&player, &album, shots = 0](const std::string &what) mutable {
        std::cout << player.getStory().back() << ": " << what << std::endl;
        shots = what == "aims" ? shots + 1 : 0;
        if (shots == 2)
            album.add("aiming");
    };
    // Called once in each step, from the player's first action on.
    player.instead = [&, asked = 0](demo::Stage stage) mutable {
        if (stage == demo::Stage::SPLASH && ++asked == splash_steps - player.look_steps)
            album.add(nameOf(stage));
        if (stage == demo::Stage::TITLE && asked > 0) {
            asked = 0;
            server.enterWindow(); // Keys go to the window that the pointer is in.
        }
        return false;
    };
}

/// Adds every frame to a film. As PlayerInLoop: the world does not know it, and it is never
/// deleted.
class Filming : public sv::Object {
  public:
    explicit Filming(const std::filesystem::path &file)
        : cast(file.string(), sv::Config::getInstance().getWindowHorizontalChars(),
               sv::Config::getInstance().getWindowVerticalChars()) {
        sv::captureScreen();
        registerInterest(sv::STEP_EVENT);
    }

    int eventHandler(const sv::Event * /*p_event*/) override {
        milliseconds += sv::GameManager::getInstance().getFrameTime();
        cast.add(milliseconds, sv::screenText(), sv::screenColors());
        return 1;
    }

  private:
    sv::Cast cast;
    int milliseconds = 0;
};

int play(const std::filesystem::path &folder, bool to_win) {
    demo::XServer server;
    if (!server.isRunning()) {
        std::cerr << "selvane_demo: cannot start an X server; is Xvfb installed?\n";
        return 1;
    }
    Album album(folder);
    demo::XHands hands(server);
    demo::GamePlayer player(hands, to_win ? demo::Plan::RIGHT : demo::Plan::NO_SHOT,
                            to_win ? LAST_LEVEL : 1);
    player.look_steps = 15;
    player.aim_steps = 5;
    document(player, server, album);
    sv::Config::getInstance().loadConfig(""); // The film has to know the window's size.
    new Filming(folder / "demo.cast");
    new demo::PlayerInLoop(player);

    const int status = playGame();
    const std::string end = player.getStory().empty() ? "" : player.getStory().back();
    const bool is_as_planned = end.starts_with(to_win ? "won" : "lost") && !player.isStuck();
    std::cout << "The game ended with: " << end << ". " << album.getCount()
              << " pictures and a film, demo.cast, are in " << folder.string() << std::endl;
    return status == 0 && is_as_planned && album.isComplete() ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc < 2 || argc > 3 || (argc == 3 && std::strcmp(argv[2], "lose") != 0)) {
        std::cerr << "usage: selvane_demo FOLDER [lose]\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        std::cerr << "selvane_demo: cannot make the folder " << folder << ": " << error.message()
                  << "\n";
        return 1;
    }
    return play(folder, argc == 2);
}
