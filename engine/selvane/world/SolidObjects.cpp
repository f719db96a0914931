#include "selvane/world/SolidObjects.h"

#include "selvane/world/Object.h"
#include "selvane/world/geometry.h"

#include <algorithm>
#include <new>

namespace sv {

namespace {

std::uint32_t number(std::size_t place) {
    return static_cast<std::uint32_t>(place);
}

} // namespace

void SolidObjects::divide(int new_columns, int new_rows, bool new_is_divided) {
    columns = new_columns;
    rows = new_rows;
    is_divided = new_is_divided;
    is_current = false;
}

void SolidObjects::setWorld(const Box &new_world) {
    world = new_world;
    is_current = false;
}

int SolidObjects::insert(Object *p_o) {
    const Corners box(getWorldBox(p_o));
    try {
        entries.push_back({box, p_o});
    } catch (const std::bad_alloc &) {
        return -1;
    }
    p_o->solid_place = entries.size() - 1;
    changeGrid([&] { grid.insert(number(p_o->solid_place), box); });
    return 0;
}

int SolidObjects::remove(const Object *p_o) {
    const std::size_t place = placeOf(p_o);
    if (place == entries.size())
        return -1;
    clear(place);
    closeGaps();
    return 0;
}

void SolidObjects::purge(const Object *p_o) {
    for (std::size_t place = 0; place < entries.size(); ++place)
        if (isAt(place, p_o))
            clear(place);
    closeGaps();
}

void SolidObjects::updatePosition(const Object *p_o, Vector new_position) {
    const Corners to(getWorldBox(p_o, new_position));
    if (p_o->filings == 1) {
        if (isAt(p_o->solid_place, p_o))
            move(p_o->solid_place, to);
        return;
    }
    for (std::size_t place = 0; place < entries.size(); ++place)
        if (isAt(place, p_o))
            move(place, to);
}

void SolidObjects::findTouched(const Object *p_o, Vector where, ObjectList &touched) const {
    if (!isAlone(p_o, Corners(getWorldBox(p_o, where))))
        search(p_o, where, touched);
}

void SolidObjects::search(const Object *p_o, Vector where, ObjectList &touched) const {
    const Box box = getWorldBox(p_o, where);
    const Corners corners(box);
    const auto add = [&](const Entry &entry) {
        if (boxIntersectsBox(box, getWorldBox(entry.object)))
            touched.insert(entry.object);
    };
    if (is_divided && findNear(p_o, corners)) {
        for (const std::uint32_t place : near)
            add(entries[place]);
        return;
    }

    for (const Entry &entry : entries)
        if (corners.mayTouch(entry.box) && entry.object != p_o)
            add(entry);
}

bool SolidObjects::isBlocked(const Object *p_o, Vector where, Vector goal) const {
    const Box box = getWorldBox(p_o, where);
    const Corners corners(box);

    const auto blocks = [&](const Entry &entry) {
        if (!corners.mayTouch(entry.box) || entry.object == p_o ||
            entry.object->getSolidness() != HARD)
            return false;
        const Box obstacle = getWorldBox(entry.object);
        return boxIntersectsBox(box, obstacle) && !boxIntersectsBox({goal, 0, 0}, obstacle);
    };
    if (isGridReady())
        return grid.visit(corners, [&](std::uint32_t place) { return blocks(entries[place]); });
    return std::any_of(entries.begin(), entries.end(), blocks);
}

bool SolidObjects::isAt(std::size_t place, const Object *p_o) const {
    return place < entries.size() && entries[place].object == p_o;
}

/// Whether it has one entry, at the place that it notes.
bool SolidObjects::isFiledOnce(const Object *p_o) const {
    return p_o->filings == 1 && isAt(p_o->solid_place, p_o);
}

/// Whether it surely touches nothing there.
bool SolidObjects::isAlone(const Object *p_o, const Corners &box) const {
    return is_current && is_divided && isFiledOnce(p_o) &&
           grid.isAlone(number(p_o->solid_place), box);
}

/// The first one; entries.size() if it has none. An object that was filed more than once may have
/// more than one.
std::size_t SolidObjects::placeOf(const Object *p_o) const {
    if (p_o->filings == 1)
        return isAt(p_o->solid_place, p_o) ? p_o->solid_place : entries.size();
    std::size_t place = 0;
    while (place < entries.size() && entries[place].object != p_o)
        ++place;
    return place;
}

void SolidObjects::clear(std::size_t place) {
    changeGrid([&] { grid.remove(number(place)); });
    entries[place] = {Corners::nowhere(), nullptr};
    ++gaps;
}

void SolidObjects::move(std::size_t place, const Corners &to) {
    const Vector from = entries[place].box.low;
    entries[place].box = to;
    changeGrid([&] { grid.move(number(place), to, from); });
}

/// Once there are more gaps than objects.
void SolidObjects::closeGaps() {
    if (gaps * 2 <= entries.size())
        return;
    std::erase_if(entries, [](const Entry &entry) { return !entry.object; });
    for (std::size_t place = 0; place < entries.size(); ++place)
        entries[place].object->solid_place = place;
    gaps = 0;
    is_current = false;
}

/// A grid that is not kept, or has no memory, is filled anew when it is needed.
template<typename Change>
void SolidObjects::changeGrid(Change change) {
    is_current = is_current && is_divided;
    if (!is_current)
        return;
    try {
        change();
    } catch (const std::bad_alloc &) {
        is_current = false;
    }
}

/// False without memory.
bool SolidObjects::fillGrid() const {
    try {
        grid.reset(world, columns, rows, is_divided);
        for (std::size_t place = 0; place < entries.size(); ++place)
            if (entries[place].object)
                grid.insert(number(place), entries[place].box);
    } catch (const std::bad_alloc &) {
        return false;
    }
    return is_current = true;
}

/// The places of the other objects that the box may touch, in order. False without memory.
bool SolidObjects::findNear(const Object *p_o, const Corners &box) const {
    if (!isGridReady())
        return false;
    near.clear();
    const auto note = [&](std::uint32_t place) {
        if (box.mayTouch(entries[place].box) && entries[place].object != p_o)
            near.push_back(place);
        return false;
    };
    try {
        if (isFiledOnce(p_o))
            grid.visitFrom(number(p_o->solid_place), box, note);
        else
            grid.visit(box, note);
    } catch (const std::bad_alloc &) {
        return false;
    }
    if (near.size() < 2)
        return true;
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    return true;
}

} // namespace sv
