#include "selvane/desk/worldOverlay.h"

#include "selvane/display/DisplayManager.h"
#include "selvane/display/InkMap.h"
#include "selvane/display/Overlay.h"
#include "selvane/display/fontSize.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/geometry.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

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

void addObject(Overlay &overlay, const Object &object) {
    const Vector where = object.getPosition();
    addWorldBox(overlay, getWorldBox(&object), colorOf(object.getSolidness()));
    if (object.getFollowPath())
        addPath(overlay, object);
    if (object.getVelocity() != Vector{})
        addArrow(overlay, pixelAt(where), pixelAt(where + object.getVelocity() * velocity_steps),
                 GREEN);
}

void addSlack(Overlay &overlay, const WorldManager &world) {
    const Box view = world.getView();
    const Vector slack = world.getViewSlack();
    const Vector extent{view.horizontal * slack.x, view.vertical * slack.y};
    const Vector corner =
        view.corner + Vector{view.horizontal - extent.x, view.vertical - extent.y} * 0.5F;
    addWorldBox(overlay, {corner, extent.x, extent.y}, BLUE);
}

/// Names of objects, of which none hides another one.
class Names {
  public:
    explicit Names(Overlay &new_overlay) : overlay(new_overlay) {}

    /// No name is put there, unless it must be.
    void keepFree(const PixelArea &area) { taken.push_back(area); }

    void add(const Object &object, Vector corner, bool must_be);

  private:
    Overlay &overlay;
    std::vector<PixelArea> taken;
    std::vector<PixelArea> names;
};

bool overlapsAny(const PixelArea &area, const std::vector<PixelArea> &others) {
    return std::ranges::any_of(others, [&](const PixelArea &other) {
        return area.left < other.right && other.left < area.right && area.top < other.bottom &&
               other.top < area.bottom;
    });
}

void Names::add(const Object &object, Vector corner, bool must_be) {
    std::string name = std::to_string(object.getId()) + " " + object.getType();
    if (!object.isVisible())
        name += " (invisible)";
    const Vector begin{corner.x, corner.y - overlay.getTextHeight() - 1};
    const PixelArea area{begin.x, begin.y + 1, begin.x + overlay.widthOf(name), corner.y - 1};
    if (overlapsAny(area, names) || (!must_be && overlapsAny(area, taken)))
        return;
    names.push_back(area);
    overlay.addText(begin, name, colorOf(object.getSolidness()));
}

bool isMoving(const Object &object) {
    return object.getVelocity() != Vector{};
}

/// In a crowd, those that move and collide are looked for.
int importanceOf(const Object *object) {
    return (isMoving(*object) ? 1 : 0) + (object->isSolid() ? 1 : 0);
}

void addNames(Overlay &overlay, std::vector<const Object *> objects) {
    std::ranges::stable_sort(objects, std::ranges::greater(), importanceOf);
    Names names(overlay);
    for (const Object *object : objects) {
        const Box box = getWorldBox(object);
        const Vector first = pixelAt(box.corner);
        const Vector last = pixelAt(box.corner + Vector{box.horizontal, box.vertical});
        names.keepFree({first.x, first.y, last.x, last.y});
    }
    for (const Object *object : objects)
        names.add(*object, pixelAt(getWorldBox(object).corner), isMoving(*object));
}

/// What the view shows, unless it is neither seen nor solid. The box of a view object stands
/// nowhere in the world.
std::vector<const Object *> shownObjects(const WorldManager &world) {
    std::vector<const Object *> shown;
    for (const Object *object : world.getAllObjects())
        if ((object->isVisible() || object->isSolid()) &&
            !dynamic_cast<const ViewObject *>(object) &&
            boxIntersectsBox(getWorldBox(object), world.getView()))
            shown.push_back(object);
    return shown;
}

} // namespace

void addWorld(Overlay &overlay) {
    const WorldManager &world = WorldManager::getInstance();
    if (world.getView() != world.getBoundary())
        addSlack(overlay, world);
    const auto objects = shownObjects(world);
    for (const Object *object : objects)
        addObject(overlay, *object);
    addNames(overlay, objects);
}

} // namespace sv
