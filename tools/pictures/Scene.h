/// A program as its documents show it: played by a script up to the step that has its picture.
#pragma once

#include "selvane/testing/Session.h"

#include <functional>
#include <ostream>
#include <span>
#include <string>

namespace pictures {

struct Scene {
    const char *name;          ///< Of its source, picture and text.
    const char *folder;        ///< That it runs in, from the top of the tree.
    const char *size;          ///< Settings: cells of 8 x 16 pixels make small pictures.
    std::function<int()> main; ///< The whole program.
    std::function<void(sv::Session &)> script;
};

inline void PrintTo(const Scene &scene, std::ostream *out) {
    *out << scene.name;
}

/// Every scene, in the order of the documents.
std::span<const Scene> scenes();

/// What a program has shown when its script has ended, and the log and status of its end.
struct Result {
    std::string screen;
    std::string log;
    int status = -1;
};

/// Plays a scene. With a name for the picture it does so in a window, which takes a display, and
/// saves what the window shows. `tree`: the top of the tree.
Result play(const Scene &scene, const std::string &tree, const std::string &picture = "");

} // namespace pictures
