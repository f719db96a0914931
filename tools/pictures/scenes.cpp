#include "pictures/Scene.h"

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
namespace keys_and_mouse {
int main();
}
namespace paths {
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

namespace pictures {

namespace {

using sv::Keyboard;
using sv::Session;

constexpr char examples[] = "examples";

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

int serveBall() {
    char program[] = "shared_ball";
    char role[] = "serve";
    char *arguments[] = {program, role};
    return shared_ball::main(2, arguments);
}

const Scene all[] = {
    {"smallest", examples, smallest::main, [](Session &session) { session.play(100); }},
    {"first_object", examples, first_object::main, [](Session &session) { session.play(100); }},
    {"sprites", examples, sprites::main, [](Session &session) { session.play(40); }},
    {"keys_and_mouse", examples, keys_and_mouse::main, useKeysAndMouse},
    {"collisions", examples, collisions::main, [](Session &session) { session.play(180); }},
    {"scrolling_world", examples, scrolling_world::main,
     [](Session &session) {
         hold(session, Keyboard::RIGHTARROW, 90);
         hold(session, Keyboard::DOWNARROW, 25);
     }},
    {"view_objects", examples, view_objects::main,
     [](Session &session) {
         type(session, {Keyboard::SPACE, Keyboard::L, Keyboard::SPACE, Keyboard::L, Keyboard::L});
         session.play();
     }},
    {"sound_and_music", examples, sound_and_music::main,
     [](Session &session) {
         type(session, {Keyboard::NUM2, Keyboard::M, Keyboard::DOWNARROW, Keyboard::V});
     }},
    {"paths", examples, paths::main,
     [](Session &session) {
         session.click({72, 8});
         session.play(20);
     }},
    {"shooter", examples, shooter::main, shootSaucers},
    {"cellar", examples, [] { return cellar::main(0, nullptr); }, walkInCellar},
    {"shared_ball", examples, serveBall, [](Session &session) { session.play(30); }},
};

} // namespace

std::span<const Scene> scenes() {
    return all;
}

} // namespace pictures
