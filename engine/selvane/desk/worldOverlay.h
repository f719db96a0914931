/// What the desk's overlay shows of the world, in the colours that docs/desk.md explains.
#pragma once

namespace sv {

class Overlay;

/// The objects that the view shows, unless they are neither seen nor solid: box, id, type,
/// velocity, and the path that they follow. The view's slack if the world is larger than the view.
void addWorld(Overlay &overlay);

} // namespace sv
