/// Ends an endless recursion through a game's handlers. The limit is deeper than chain reactions
/// go, and fits on a stack of a megabyte.
///
/// Beyond the limit every call is refused, and the calls under way return early: if two handlers
/// call each other twice, refusing only the deepest calls would leave 2^500 of them.
#pragma once

#include <utility>

namespace sv {

class NestingLimit {
  public:
    static constexpr int MOST = 500;

    /// A call under way, for as long as it lives.
    class Call {
      public:
        explicit Call(NestingLimit &new_limit) : limit(new_limit) {
            ++limit.depth;
            limit.is_reached = limit.is_reached || limit.depth > MOST;
        }
        ~Call() {
            --limit.depth;
            limit.is_reached = limit.is_reached && limit.depth > 0;
        }
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;

        bool isRefused() const { return limit.is_reached; }

      private:
        NestingLimit &limit;
    };

    /// Whether calls are refused, and those under way have to return.
    bool isReached() const { return is_reached; }

    /// The same, but the outermost call continues.
    bool isReachedWithin() {
        if (is_reached)
            is_reached = depth > 1;
        return is_reached;
    }

    /// True once a session: a refusal in every step needs no line in every step.
    bool isFirstRefusal() { return std::exchange(logged_in, session) != session; }

    /// Begins the next session, for every limit.
    static void beginSession() { ++session; }

  private:
    int depth = 0;
    bool is_reached = false;
    int logged_in = -1; // The session of the last line.
    static inline int session = 0;
};

} // namespace sv
