#include "pictures/Scene.h"

#include "selvane/display/DisplayManager.h"

namespace pictures {

Result play(const Scene &scene, const std::string &tree, const std::string &picture) {
    const bool in_window = !picture.empty();
    sv::Session session(
        scene.main,
        {.config = scene.size, .folder = tree + "/" + scene.folder, .in_window = in_window});
    session.start();
    scene.script(session);
    if (in_window)
        sv::DisplayManager::getInstance().saveScreenshot(picture);
    session.play();
    Result result;
    result.screen = session.screen() + "\n";
    session.end();
    result.log = session.log();
    result.status = session.exitStatus();
    return result;
}

} // namespace pictures
