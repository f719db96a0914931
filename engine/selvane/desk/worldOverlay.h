/// What the desk's overlay shows of the world, in the colours that docs/desk.md explains.
#pragma once

namespace sv {

class Overlay;

/// The objects that the view shows, but for view objects and those that are neither seen nor solid:
/// box, velocity, the path that they follow, and id and type where these hide nothing else. The
/// view's slack if the world is larger than the view.
void addWorld(Overlay &overlay);

} // namespace sv
