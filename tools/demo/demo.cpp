// Plays the game by itself, in a real window on a display of its own, with real keys and a real
// mouse, and leaves a picture of every screen.
//   selvane_demo FOLDER [lose]
// It is to be started in the folder that the game runs in. Exit status 0 if the game went as meant.

#include "display/DisplayManager.h"
#include "game/playGame.h"
#include "support/GamePlayer.h"
#include "support/XHands.h"
#include "support/XServer.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <cstring>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace {

// Steps of the title sequence until everything in it stands where it belongs.
constexpr int splash_steps = 75;

class Album {
  public:
    explicit Album(std::filesystem::path new_folder) : folder(std::move(new_folder)) {}

    void add(const std::string &name) {
        sf::RenderWindow *p_window = sv::DisplayManager::getInstance().getWindow();
        if (!p_window)
            return;
        sf::Texture texture;
        if (!texture.create(p_window->getSize().x, p_window->getSize().y))
            return;
        texture.update(*p_window);
        ++count;
        std::ostringstream file_name;
        file_name << std::setw(2) << std::setfill('0') << count << "-" << name << ".png";
        const auto file = folder / file_name.str();
        if (!texture.copyToImage().saveToFile(file.string()))
            is_complete = false;
    }

    bool isComplete() const { return is_complete; }
    int getCount() const { return count; }

  private:
    std::filesystem::path folder;
    int count = 0;
    bool is_complete = true;
};

int play(const std::filesystem::path &folder, bool to_win) {
    test::XServer server;
    if (!server.isRunning()) {
        std::cerr << "selvane_demo: no display of its own could be started; is Xvfb installed?\n";
        return 1;
    }
    Album album(folder);
    test::XHands hands(server);
    static test::GamePlayer &player = *new test::GamePlayer(
        hands, to_win ? test::Plan::RIGHT : test::Plan::NO_SHOT, to_win ? 3 : 1);
    player.look_steps = 15;
    player.aim_steps = 5;
    int shots = 0;
    int splash_step = 0;
    player.on_sight = [&](test::Stage stage) {
        if (stage != test::Stage::SPLASH)
            album.add(nameOf(stage));
        shots = 0;
    };
    player.on_action = [&](const std::string &what) {
        std::cout << player.getStory().back() << ": " << what << std::endl;
        if (what == "aims" && ++shots == 2)
            album.add("aiming");
    };
    player.instead = [&](test::Stage stage) {
        if (stage == test::Stage::SPLASH && ++splash_step == splash_steps)
            album.add(nameOf(stage));
        if (stage == test::Stage::TITLE && splash_step > 0) {
            splash_step = 0;
            server.enterWindow(); // Keys go to the window that the pointer is in.
        }
        return false;
    };
    const int status = playGame();
    const std::string end = player.getStory().empty() ? "" : player.getStory().back();
    const bool is_as_meant = end.starts_with(to_win ? "won" : "lost") && !player.isStuck();
    std::cout << "The game ended with: " << end << ". " << album.getCount() << " pictures are in "
              << folder.string() << std::endl;
    return status == 0 && is_as_meant && album.isComplete() ? 0 : 1;
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
        std::cerr << "selvane_demo: no folder " << folder << ": " << error.message() << "\n";
        return 1;
    }
    return play(folder, argc == 2);
}
