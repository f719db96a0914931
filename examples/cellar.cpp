// A whole game: fetch the gold, mind the goblins, find the stairs. The arrows move, Q quits. The
// map is a text file; another one can be named: cellar MAP.

#include "selvane/selvane.h"

#include <fstream>
#include <string>
#include <vector>

sv::WorldManager &world() {
    return sv::WorldManager::getInstance();
}

/// One character of the map that is an object.
class Thing : public sv::Object {
  public:
    Thing(char new_ch, sv::Color new_color, sv::Solidness new_solidness, sv::Vector where)
        : ch(new_ch), color(new_color) {
        setType(std::string(1, ch));
        setSolidness(new_solidness);
        setPosition(where);
    }

    int draw() override {
        return sv::DisplayManager::getInstance().drawCh(getPosition(), ch, color);
    }

  private:
    char ch;
    sv::Color color;
};

/// A counter or a message at the edge of the view.
sv::ViewObject *showView(const std::string &label, int location, int value) {
    auto *p_view = sv::spawn<sv::ViewObject>();
    p_view->setViewString(label);
    p_view->setLocation(location);
    p_view->setValue(value);
    p_view->setColor(sv::YELLOW);
    return p_view;
}

class Player : public Thing {
  public:
    explicit Player(sv::Vector where) : Thing('@', sv::YELLOW, sv::HARD, where) {
        setAltitude(3);
        registerInterest(sv::KEYBOARD_EVENT);
        p_message->setBorder(false);
        p_message->setDrawValue(false);
        world().setViewFollowing(this);
        world().setViewPosition(where);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (const auto *p_collision = sv::eventCast<sv::EventCollision>(p_event))
            meet(p_collision->other(this));
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (p_key && p_key->getKeyboardAction() == sv::KEY_PRESSED)
            press(p_key->getKey());
        return 1;
    }

    void beBitten() {
        p_health->setValue(p_health->getValue() - 1);
        p_message->setViewString(isAlive() ? "The goblin bites!" : "You die. Q leaves.");
        setVisible(isAlive()); // Not inactive: Q must still be heard.
    }

    bool isAlive() const { return p_health->getValue() > 0; }

  private:
    void press(sv::Keyboard::Key key) {
        if (key == sv::Keyboard::Q)
            sv::GameManager::getInstance().setGameOver();
        const int right = (key == sv::Keyboard::RIGHTARROW) - (key == sv::Keyboard::LEFTARROW);
        const int down = (key == sv::Keyboard::DOWNARROW) - (key == sv::Keyboard::UPARROW);
        const sv::Vector way{static_cast<float>(right), static_cast<float>(down)};
        if (isAlive() && way != sv::Vector{})
            world().moveObject(this, getPosition() + way);
    }

    void meet(sv::Object *p_other) {
        if (p_other->getType() == ">")
            p_message->setViewString("You escape with your gold! Q leaves.");
        if (p_other->getType() != "$")
            return;
        p_message->setViewString("You find gold.");
        p_gold->setValue(p_gold->getValue() + 1);
        world().retire(p_other);
    }

    sv::ViewObject *p_gold = showView("Gold", sv::TOP_RIGHT, 0);
    sv::ViewObject *p_health = showView("Health", sv::TOP_LEFT, 10);
    sv::ViewObject *p_message = showView("Find the stairs.", sv::BOTTOM_CENTER, 0);
};

class Goblin : public Thing {
  public:
    Goblin(sv::Vector where, Player *p_new_player)
        : Thing('g', sv::GREEN, sv::HARD, where), p_player(p_new_player) {
        setSpeed(0.15F);
        setAvoidCollisions(true); // Without it, it stops at the first corner.
        registerInterest(sv::STEP_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() != sv::STEP_EVENT)
            return Object::eventHandler(p_event); // Which follows a path that was found.
        const float distance = sv::distance(getPosition(), p_player->getPosition());
        if (--bite_wait <= 0 && distance < 1.6F && p_player->isAlive()) {
            bite_wait = 30; // Steps.
            p_player->beBitten();
        }
        if (--think_wait <= 0 && distance < 30 && !isSearching()) {
            think_wait = sv::randomInt(15, 25);
            findPath(p_player);
        }
        return 1;
    }

  private:
    Player *p_player;
    int think_wait = 10;
    int bite_wait = 0;
};

/// 0, or -1 with the reason in the log.
int loadMap(const std::string &name) {
    std::ifstream file(name);
    std::vector<sv::Vector> goblins;
    Player *p_player = nullptr;
    sv::Vector at;
    sv::Box all;
    for (std::string row; std::getline(file, row); ++at.y) {
        at.x = 0;
        for (const char ch : row) {
            if (ch == '#')
                sv::spawn<Thing>(ch, sv::WHITE, sv::HARD, at);
            else if (ch == '$' || ch == '>')
                sv::spawn<Thing>(ch, ch == '$' ? sv::YELLOW : sv::CYAN, sv::SOFT, at);
            else if (ch == 'g')
                goblins.push_back(at);
            else if (ch == '@')
                p_player = sv::spawn<Player>(at);
            ++at.x;
        }
        all = {{0, 0}, std::max(all.horizontal, at.x), at.y + 1};
    }
    if (!p_player)
        return sv::logFailure("Cannot read a map with an @ from '%s'!", name.c_str());
    world().setBoundary(all);
    world().setViewPosition(p_player->getPosition());
    for (const sv::Vector where : goblins)
        sv::spawn<Goblin>(where, p_player);
    return 0;
}

int main(int argc, char *argv[]) {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && loadMap(argc > 1 ? argv[1] : "cellar.txt") == 0;
    if (is_ready)
        game.run();
    game.shutDown();
    return is_ready ? 0 : 1;
}
