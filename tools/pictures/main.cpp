// Plays every scene and writes its screen as a text and as a picture.
//   make_pictures TREE [NAME]
// Into TREE/examples/screens and TREE/examples/pictures. With a NAME, only that one.

#include "pictures/Scene.h"

#include "demo/XServer.h"

#include <fstream>
#include <iostream>

int main(int argc, char *argv[]) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: make_pictures TREE [NAME]\n";
        return 2;
    }
    const std::string tree = argv[1];
    const demo::XServer server;
    if (!server.isRunning()) {
        std::cerr << "make_pictures: cannot start an X server; is Xvfb installed?\n";
        return 1;
    }
    bool is_fine = true;
    for (const pictures::Scene &scene : pictures::scenes()) {
        const std::string name = scene.name;
        if (argc == 3 && name != argv[2])
            continue;
        const pictures::Result result =
            play(scene, tree, tree + "/examples/pictures/" + name + ".png");
        std::ofstream(tree + "/examples/screens/" + name + ".txt") << result.screen;
        std::cout << name << ": status " << result.status << "\n" << result.screen << std::flush;
        is_fine = is_fine && result.status == 0;
    }
    return is_fine ? 0 : 1;
}
