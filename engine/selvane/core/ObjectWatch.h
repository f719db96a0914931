/// Watches pointers to objects on the stack of code that calls handlers: each becomes null when its
/// object is destroyed, so that a handler may destroy any object, its own included.
///
/// Watches nest as the calls do. While there is one, a handler, a draw() or a destructor may be
/// running, and calls that would stop the world are refused. Game-loop thread only.
#pragma once

#include <cstddef>

namespace sv {

class Object;
class ObjectList;

class ObjectWatch {
  public:
    /// Watches nothing and only marks that handlers may be running.
    ObjectWatch() : ObjectWatch(nullptr, 0) {}

    /// Watches one pointer, or every element of a list. REQUIRES: it outlives the watch, and the
    /// list neither grows nor shrinks meanwhile.
    explicit ObjectWatch(Object *&p_o) : ObjectWatch(&p_o, 1) {}
    explicit ObjectWatch(ObjectList &list);

    ~ObjectWatch() { innermost = outer; }
    ObjectWatch(const ObjectWatch &) = delete;
    ObjectWatch &operator=(const ObjectWatch &) = delete;

    static bool isAny() { return innermost != nullptr; }

    /// Called when an object is destroyed.
    static void forget(const Object *p_o);

    /// Called at the end of the process: a handler that called exit() never returns.
    static void endAll() { innermost = nullptr; }

  private:
    ObjectWatch(Object **new_first, std::size_t new_count)
        : first(new_first), count(new_count), outer(innermost) {
        innermost = this;
    }

    static ObjectWatch *innermost;

    Object **first;
    std::size_t count;
    ObjectWatch *outer;
};

} // namespace sv
