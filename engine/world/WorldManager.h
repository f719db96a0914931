/// The world that objects live in: its extent and the part of it that the window shows, in cells.
///
/// Game-loop thread only.
#pragma once

#include "core/Box.h"
#include "core/Manager.h"

namespace sv {

class WorldManager : public Manager {
  public:
    static WorldManager &getInstance();

    int startUp() override;
    void shutDown() override;

    /// Moves the objects of the world by one step.
    void update() {}

    /// Draws the visible objects.
    void draw() {}

    Box getBoundary() const { return boundary; }
    void setBoundary(const Box &new_boundary) { boundary = new_boundary; }
    Box getView() const { return view; }
    void setView(const Box &new_view) { view = new_view; }

    /// The fraction of the view, 0 to 1 on each axis and around its centre, in which a followed
    /// object moves without moving the view.
    void setViewSlack(Vector new_view_slack) { view_slack = new_view_slack; }
    Vector getViewSlack() const { return view_slack; }

  private:
    WorldManager();

    Box boundary;
    Box view;
    Vector view_slack;
};

} // namespace sv
