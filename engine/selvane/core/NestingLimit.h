/// Ends a recursion that runs through a game's handlers and has no end of its own. The limit is
/// deeper than chain reactions go, and leaves room on a stack of a megabyte.
///
/// Beyond the limit every call is refused, and those under way end early: with two handlers that
/// each call on, refusing the deepest calls alone would leave 2^500 of them.
#pragma once

namespace sv {

class NestingLimit {
  public:
    static constexpr int MOST = 500;

    /// One call, while it lives.
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

    /// Whether calls are refused, and those under way have to end.
    bool isReached() const { return is_reached; }

    /// The same, but the outermost call goes on as if nothing had been.
    bool isReachedWithin() {
        is_reached = is_reached && depth > 1;
        return is_reached;
    }

    /// True the first time: what is refused in every step needs no line in every step.
    bool isNews() {
        const bool is_news = !is_said;
        is_said = true;
        return is_news;
    }

  private:
    int depth = 0;
    bool is_reached = false;
    bool is_said = false;
};

} // namespace sv
