#include "selvane/desk/worldOverlay.h"

#include "selvane/display/DisplayManager.h"
#include "selvane/display/Overlay.h"
#include "selvane/display/fontSize.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/geometry.h"

#include <algorithm>

namespace sv {

namespace {

constexpr float velocity_steps = 10; // A velocity is shown as the way of so many steps.
constexpr float arrow_head = 5;      // Pixels.

Color colorOf(Solidness solidness) {
    constexpr Color colors[] = {RED, YELLOW, CYAN};
    return colors[solidness];
}

/// An object's position is the middle of its cell, and the cell is a little off the place where its
/// character is drawn.
Vector pixelAt(Vector where) {
    const Vector cell{charWidth(), charHeight()};
    const Vector to_middle{cell.x * 0.5F - cell.x / RECTANGLE_LEFT,
                           cell.y * 0.5F + cell.y / RECTANGLE_DOWN};
    return DisplayManager::getInstance().worldToPixels(where) + to_middle;
}

void addWorldBox(Overlay &overlay, const Box &box, Color color) {
    const Vector corner = pixelAt(box.corner);
    const Vector opposite = pixelAt(box.corner + Vector{box.horizontal, box.vertical});
    overlay.addBox(corner, opposite - corner, color);
}

void addArrow(Overlay &overlay, Vector from, Vector to, Color color) {
    overlay.addLine(from, to, color);
    const Vector back = normalized(from - to) * arrow_head;
    const Vector aside{back.y * 0.5F, -back.x * 0.5F};
    overlay.addLine(to, to + back + aside, color);
    overlay.addLine(to, to + back - aside, color);
}

void addPath(Overlay &overlay, const Object &object) {
    Vector from = object.getPosition();
    for (const Vector waypoint : object.getPath().waypoints) {
        overlay.addLine(pixelAt(from), pixelAt(waypoint), MAGENTA);
        from = waypoint;
    }
}

void addName(Overlay &overlay, const Object &object, Vector corner) {
    std::string name = std::to_string(object.getId()) + " " + object.getType();
    if (!object.isVisible())
        name += " (invisible)";
    overlay.addText({corner.x, std::max(corner.y - overlay.getTextHeight(), 0.F)}, name,
                    colorOf(object.getSolidness()));
}

void addObject(Overlay &overlay, const Object &object) {
    const Vector where = object.getPosition();
    const Box box = boxAt(object.getBox(), where);
    addWorldBox(overlay, box, colorOf(object.getSolidness()));
    if (object.getFollowPath())
        addPath(overlay, object);
    if (object.getVelocity() != Vector{})
        addArrow(overlay, pixelAt(where), pixelAt(where + object.getVelocity() * velocity_steps),
                 GREEN);
    addName(overlay, object, pixelAt(box.corner));
}

void addSlack(Overlay &overlay, const WorldManager &world) {
    const Box view = world.getView();
    const Vector slack = world.getViewSlack();
    const Vector extent{view.horizontal * slack.x, view.vertical * slack.y};
    const Vector corner =
        view.corner + Vector{view.horizontal - extent.x, view.vertical - extent.y} * 0.5F;
    addWorldBox(overlay, {corner, extent.x, extent.y}, BLUE);
}

} // namespace

void addWorld(Overlay &overlay) {
    const WorldManager &world = WorldManager::getInstance();
    const Box view = world.getView();
    if (view != world.getBoundary())
        addSlack(overlay, world);
    for (const Object *object : world.getAllObjects()) {
        if (!object->isVisible() && !object->isSolid())
            continue;
        if (dynamic_cast<const ViewObject *>(object)) // Its box stands nowhere in the world.
            addName(overlay, *object, pixelAt(view.corner + object->getPosition()));
        else if (boxIntersectsBox(getWorldBox(object), view))
            addObject(overlay, *object);
    }
}

} // namespace sv
