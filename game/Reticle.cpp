#include "game/Reticle.h"

#include "selvane/core/EventMouse.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/world/WorldManager.h"

Reticle::Reticle() {
    setType("Reticle");
    setSolidness(sv::SPECTRAL);
    setAltitude(sv::MAX_ALTITUDE);
    registerInterest(sv::MOUSE_EVENT);
    const sv::Box boundary = sv::WorldManager::getInstance().getBoundary();
    setPosition({boundary.horizontal / 2, boundary.vertical / 2});
}

int Reticle::eventHandler(const sv::Event *p_event) {
    const auto *mouse_event = sv::eventCast<sv::EventMouse>(p_event);
    if (!mouse_event || mouse_event->getMouseAction() != sv::MOVED)
        return 0;
    setPosition(mouse_event->getMousePosition());
    return 1;
}

int Reticle::draw() {
    return sv::DisplayManager::getInstance().drawCh(getPosition(), '+', sv::WHITE);
}
