#include "pictures/Scene.h"

#include "game/playGame.h"
#include "selvane/core/Keyboard.h"

namespace cellar {
int main(int argc, char *argv[]);
}
namespace collisions {
int main();
}
namespace first_object {
int main();
}
namespace ghost {
int main();
}
namespace keys_and_mouse {
int main();
}
namespace name {
int main();
}
namespace paths {
int main();
}
namespace room {
int main();
}
namespace scrolling_world {
int main();
}
namespace shared_ball {
int main(int argc, char *argv[]);
}
namespace shooter {
int main();
}
namespace smallest {
int main();
}
namespace sound_and_music {
int main();
}
namespace sprites {
int main();
}
namespace view_objects {
int main();
}
namespace step_01 {
int playGame();
}
namespace step_02 {
int playGame();
}
namespace step_03 {
int playGame();
}
namespace step_04 {
int playGame();
}
namespace step_05 {
int playGame();
}
namespace step_06 {
int playGame();
}
namespace step_07 {
int playGame();
}
namespace step_08 {
int playGame();
}
namespace step_09 {
int playGame();
}

namespace pictures {

namespace {

using sv::Keyboard;
using sv::Session;

constexpr char examples[] = "examples";
constexpr char wide[] = "window_horizontal_pixels:640,window_vertical_pixels:384,";
constexpr char wide_desk[] = "desk:true,window_horizontal_pixels:640,window_vertical_pixels:384,";
constexpr char guide[] = "examples/guide";
constexpr char here[] = ".";
constexpr char tall[] = "window_horizontal_chars:100,window_vertical_chars:40,"
                        "window_horizontal_pixels:800,window_vertical_pixels:640,";
constexpr char narrow[] = "window_horizontal_pixels:400,window_vertical_pixels:320,";

/// Holds a key for some steps.
void hold(Session &session, Keyboard::Key key, int steps) {
    session.pressKey(key);
    session.play(steps);
    session.releaseKey(key);
}

/// Presses and releases keys, one in each step.
void type(Session &session, std::initializer_list<Keyboard::Key> keys) {
    for (const Keyboard::Key key : keys) {
        session.tapKey(key);
        session.play();
    }
}

void walkInCellar(Session &session) {
    for (int i = 0; i < 5; ++i)
        type(session, {Keyboard::RIGHTARROW, Keyboard::DOWNARROW});
    for (int i = 0; i < 14; ++i)
        type(session, {Keyboard::DOWNARROW});
    session.play(30);
}

void useKeysAndMouse(Session &session) {
    hold(session, Keyboard::RIGHTARROW, 20);
    type(session, {Keyboard::SPACE});
    session.click({60.5F, 5.5F});
    session.play();
    session.click({64.5F, 7.5F});
    session.play();
    session.moveMouse({62.5F, 18.5F});
    hold(session, Keyboard::DOWNARROW, 20);
    session.play();
}

void shootSaucers(Session &session) {
    session.play(60);
    session.pressKey(Keyboard::SPACE);
    hold(session, Keyboard::UPARROW, 12);
    hold(session, Keyboard::DOWNARROW, 24);
    session.play(40);
    hold(session, Keyboard::DOWNARROW, 4);
    session.play(28);
}

void walk(Session &session) {
    hold(session, Keyboard::RIGHTARROW, 10);
    hold(session, Keyboard::UPARROW, 10);
    session.play();
}

/// With a slip, and the cursor in sight.
void typeName(Session &session) {
    session.typeText("Mül");
    session.play();
    session.typeText("t");
    session.play();
    type(session, {Keyboard::BACKSPACE});
    session.typeText("ler");
    session.play(30);
}

/// The first race, and the second one halfway.
void runRaces(Session &session) {
    session.pressKey(Keyboard::RIGHTARROW);
    session.play(110);
}

/// Four drops, a step of the way between them.
void water(Session &session, Keyboard::Key way) {
    for (int i = 0; i < 4; ++i) {
        type(session, {Keyboard::SPACE});
        hold(session, way, 4);
    }
}

void waterBeetles(Session &session) {
    session.play(120);
    for (const Keyboard::Key way : {Keyboard::DOWNARROW, Keyboard::UPARROW, Keyboard::UPARROW,
                                    Keyboard::DOWNARROW, Keyboard::UPARROW})
        water(session, way);
}

/// Past the title sequence, the title and the screens of the first level.
void beginLevel(Session &session) {
    session.play(95);
    for (const Keyboard::Key key : {Keyboard::P, Keyboard::S, Keyboard::H, Keyboard::A, Keyboard::P,
                                    Keyboard::E, Keyboard::SPACE}) {
        type(session, {key});
        session.play(3);
    }
    session.moveMouse({40.5F, 20.5F});
    session.play(80);
}

int serveBall() {
    char program[] = "shared_ball";
    char role[] = "serve";
    char *arguments[] = {program, role};
    return shared_ball::main(2, arguments);
}

const Scene all[] = {
    {"afterimage", here, tall, playGame, beginLevel},
    {"smallest", examples, wide, smallest::main, [](Session &session) { session.play(100); }},
    {"first_object", examples, wide, first_object::main,
     [](Session &session) { session.play(100); }},
    {"sprites", examples, wide, sprites::main, [](Session &session) { session.play(40); }},
    {"keys_and_mouse", examples, wide, keys_and_mouse::main, useKeysAndMouse},
    {"collisions", examples, wide, collisions::main, [](Session &session) { session.play(180); }},
    {"scrolling_world", examples, wide, scrolling_world::main,
     [](Session &session) {
         hold(session, Keyboard::RIGHTARROW, 90);
         hold(session, Keyboard::DOWNARROW, 25);
     }},
    {"view_objects", examples, wide, view_objects::main,
     [](Session &session) {
         type(session, {Keyboard::SPACE, Keyboard::L, Keyboard::SPACE, Keyboard::L, Keyboard::L});
         session.play();
     }},
    {"sound_and_music", examples, wide, sound_and_music::main,
     [](Session &session) {
         type(session, {Keyboard::NUM2, Keyboard::M, Keyboard::DOWNARROW, Keyboard::V});
     }},
    {"name", examples, wide, name::main, typeName},
    {"room", examples, wide, room::main,
     [](Session &session) {
         for (int i = 0; i < 3; ++i)
             type(session, {Keyboard::RIGHTARROW});
         session.play(4);
     }},
    {"paths", examples, wide, paths::main,
     [](Session &session) {
         session.click({72, 8});
         session.play(20);
     }},
    {"shooter", examples, wide, shooter::main, shootSaucers},
    {"desk", examples, wide_desk, shooter::main,
     [](Session &session) {
         session.tapKey(Keyboard::F9);
         session.play(110);
         hold(session, Keyboard::SPACE, 30);
     }},
    {"cellar", examples, wide, [] { return cellar::main(0, nullptr); }, walkInCellar},
    {"ghost", examples, wide, ghost::main, runRaces},
    {"shared_ball", examples, wide, serveBall, [](Session &session) { session.play(30); }},
    {"step_01", guide, narrow, step_01::playGame, [](Session &session) { session.play(); }},
    {"step_02", guide, narrow, step_02::playGame, [](Session &session) { session.play(); }},
    {"step_03", guide, narrow, step_03::playGame, walk},
    {"step_04", guide, narrow, step_04::playGame,
     [](Session &session) { water(session, Keyboard::DOWNARROW); }},
    {"step_05", guide, narrow, step_05::playGame, waterBeetles},
    {"step_06", guide, narrow, step_06::playGame, waterBeetles},
    {"step_07", guide, narrow, step_07::playGame, waterBeetles},
    {"step_08", guide, narrow, step_08::playGame, [](Session &session) { session.play(1000); }},
    {"step_09", guide, narrow, step_09::playGame, [](Session &session) { session.play(150); }},
};

} // namespace

std::span<const Scene> scenes() {
    return all;
}

} // namespace pictures
