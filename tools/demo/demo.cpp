// Plays the game by itself, in a real window on a display of its own, with real keys and a real
// mouse, and leaves a picture of every screen.
//   selvane_demo FOLDER [lose]
// It is to be started in the folder that the game runs in. Exit status 0 if the game went as meant.

#include "demo/GamePlayer.h"
#include "demo/XHands.h"
#include "demo/XServer.h"
#include "game/LevelManager.h"
#include "game/playGame.h"
#include "selvane/display/DisplayManager.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <cstring>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace {

// The step of the title sequence by which everything in it stands where it belongs.
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
        sf::RenderWindow *p_window = sv::DisplayManager::getInstance().getWindow();
        sf::Texture texture;
        if (!p_window || !texture.create(p_window->getSize().x, p_window->getSize().y))
            return false;
        texture.update(*p_window);
        return texture.copyToImage().saveToFile(file.string());
    }

    std::filesystem::path folder;
    int count = 0;
    bool is_complete = true;
};

/// Has every screen photographed, and everything said that the player does. What it is given is to
/// live as long as the game.
void accompany(demo::GamePlayer &player, demo::XServer &server, Album &album) {
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
    // Asked once in each step, from the one on in which the player would act.
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

int play(const std::filesystem::path &folder, bool to_win) {
    demo::XServer server;
    if (!server.isRunning()) {
        std::cerr << "selvane_demo: no display of its own could be started; is Xvfb installed?\n";
        return 1;
    }
    Album album(folder);
    demo::XHands hands(server);
    // Never deleted; and kept where the leak check sees it.
    static demo::GamePlayer *p_player = nullptr;
    p_player = new demo::GamePlayer(hands, to_win ? demo::Plan::RIGHT : demo::Plan::NO_SHOT,
                                    to_win ? LAST_LEVEL : 1);
    p_player->look_steps = 15;
    p_player->aim_steps = 5;
    accompany(*p_player, server, album);

    const int status = playGame();
    const std::string end = p_player->getStory().empty() ? "" : p_player->getStory().back();
    const bool is_as_meant = end.starts_with(to_win ? "won" : "lost") && !p_player->isStuck();
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
