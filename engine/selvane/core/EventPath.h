/// Sent to an object when its search for a path ends.
#pragma once

#include "selvane/core/Event.h"
#include "selvane/core/Vector.h"

#include <vector>

namespace sv {

// The status of a search.
inline constexpr int PATH_NONE = 0;
inline constexpr int PATH_SEARCHING = 1;
inline constexpr int PATH_FOUND = 2;

class EventPath : public Event {
  public:
    static constexpr const char *TYPE = PATH_EVENT;

    /// `new_path`: from the start cell to the goal cell, both included; empty if none was found.
    EventPath(int new_status, const std::vector<Vector> &new_path)
        : Event(PATH_EVENT), status(new_status), path(new_path) {}

    int getStatus() const { return status; }
    const std::vector<Vector> &getPath() const { return path; }

  private:
    int status;
    std::vector<Vector> path;
};

} // namespace sv
