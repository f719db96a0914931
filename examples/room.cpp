// Letters and colours: a room with walls of lines, a floor in the light of torches, and signs that
// no keyboard has. The arrows walk, Q quits. The configuration has utf8:true.

#include "selvane/selvane.h"

#include <algorithm>
#include <string>
#include <vector>

sv::DisplayManager &display() {
    return sv::DisplayManager::getInstance();
}

const std::vector<std::string> map = {
    "╔══════════════════╦═══════════════════════╗", "║..................║.......................║",
    "║..................║.......♣...............║", "║....▓▓▓.....☼.....║...............~~~~....║",
    "║....▓▓▓...........╨..............~~~~~~...║", "║.........................†........~~~~....║",
    "║..................╥.......................║", "║......♦...........║.........☼.............║",
    "║..................║...................$...║", "╚══════════════════╩═══════════════════════╝",
};
const sv::Vector corner{18, 7}; // Of the map, in the window.

/// The torches beside the room, and the lamps in it.
const std::vector<sv::Vector> lights = {corner + sv::Vector{-4, 5}, corner + sv::Vector{47, 5},
                                        corner + sv::Vector{12, 3}, corner + sv::Vector{29, 7}};

/// How bright it is at a place, from 0 to 1.
float lightAt(sv::Vector place) {
    constexpr float reach = 18; // Cells.
    float light = 0;
    for (const sv::Vector source : lights) {
        sv::Vector way = place - source;
        way.y *= 2; // A cell is twice as high as wide.
        light = std::max(light, 1 - sv::length(way) / reach);
    }
    return light;
}

/// In three steps, from a third of the colour to all of it.
sv::Rgb lit(sv::Rgb color, float light) {
    const int third = std::clamp(static_cast<int>(light * 3) + 1, 1, 3);
    const auto part = [=](int component) {
        return static_cast<unsigned char>(component * third / 3);
    };
    return {part(color.r), part(color.g), part(color.b)};
}

sv::Rgb colorOf(char32_t ch) {
    switch (ch) {
    case U'♣':
        return {90, 220, 90};
    case U'♦':
        return {255, 70, 110};
    case U'†':
        return {220, 220, 240};
    case U'☼':
        return {255, 245, 170};
    case U'$':
        return {255, 215, 0};
    case U'~':
        return {140, 190, 255};
    case U'·':
        return {204, 153, 102};
    default:
        return {255, 238, 204};
    }
}

sv::Rgb groundOf(char32_t ch) {
    return ch == U'~' ? sv::Rgb(51, 102, 204) : sv::Rgb(153, 102, 51);
}

/// Walls, floor, and what lies on it.
class Room : public sv::Object {
  public:
    Room() {
        setType("Room");
        setSolidness(sv::SPECTRAL);
        setAltitude(0);
    }

    int draw() override {
        sv::Vector at = corner;
        for (const std::string &row : map) {
            for (const char32_t sign : sv::fromUtf8(row)) {
                const char32_t ch = sign == U'.' ? U'·' : sign;
                const float light = lightAt(at);
                display().drawCh(at, ch, lit(colorOf(ch), light), lit(groundOf(ch), light));
                at.x += 1;
            }
            at = {corner.x, at.y + 1};
        }
        return 0;
    }
};

/// A sprite whose cells have colours of their own.
class Torch : public sv::Object {
  public:
    explicit Torch(sv::Vector where) {
        setType("Torch");
        setSolidness(sv::SPECTRAL);
        setSprite("torch");
        setPosition(where);
    }
};

bool isFree(sv::Vector place) {
    const sv::Vector at = place - corner;
    const std::u32string row = sv::fromUtf8(map[static_cast<std::size_t>(at.y)]);
    return std::u32string(U".†♦♣$").find(row[static_cast<std::size_t>(at.x)]) !=
           std::u32string::npos;
}

class Player : public sv::Object {
  public:
    Player() {
        setType("Player");
        setSolidness(sv::SPECTRAL);
        setAltitude(3);
        setPosition(corner + sv::Vector{10, 5});
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int draw() override {
        const sv::Vector at = getPosition();
        return display().drawCh(at, '@', sv::Rgb(sv::WHITE), lit(groundOf(U'.'), lightAt(at)));
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!p_key || p_key->getKeyboardAction() != sv::KEY_PRESSED)
            return Object::eventHandler(p_event);
        const sv::Keyboard::Key key = p_key->getKey();
        if (key == sv::Keyboard::Q)
            sv::GameManager::getInstance().setGameOver();
        const int right = (key == sv::Keyboard::RIGHTARROW) - (key == sv::Keyboard::LEFTARROW);
        const int down = (key == sv::Keyboard::DOWNARROW) - (key == sv::Keyboard::UPARROW);
        const sv::Vector way{static_cast<float>(right), static_cast<float>(down)};
        return isFree(getPosition() + way) ? setPosition(getPosition() + way) : 0;
    }
};

/// A line with its middle at that place of the view.
void showLine(const std::string &text, sv::Vector where, sv::Rgb color) {
    auto *p_line = sv::spawn<sv::ViewObject>();
    p_line->setViewString(text);
    p_line->setBorder(false);
    p_line->setDrawValue(false);
    p_line->setPosition(where);
    p_line->setColor(color);
    p_line->setBackground(sv::Rgb(25, 25, 40));
}

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
    const bool is_ready =
        game.startUp() == 0 && resources.loadSprite("sprites/torch.txt", "torch") == 0;
    if (is_ready) {
        sv::spawn<Room>();
        sv::spawn<Torch>(lights[0]);
        sv::spawn<Torch>(lights[1]);
        sv::spawn<Player>();
        showLine(" Müller, Zauberlehrling ", {30, 5}, {255, 220, 120});
        showLine(" ♥♥♥♥♡ ███████▌░░ ", {53, 5}, {255, 70, 110});
        showLine(" Ψ Δ Ω → the runes say «Жизнь» ", {40, 18}, {150, 200, 255});
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
