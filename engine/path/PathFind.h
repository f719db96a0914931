/// One search for a path, of an object to a cell or to another object. Its object owns it, the path
/// manager gives it its share of each step. It does not search yet.
///
/// Game-loop thread only.
#pragma once

namespace sv {

class Object;

class PathFind {
  public:
    /// Borrows both objects; `p_target` may be null.
    explicit PathFind(Object *p_object, Object *p_target = nullptr)
        : object(p_object), target(p_target) {}

    Object *getObject() const { return object; }
    Object *getTarget() const { return target; }

    /// The target is gone: the search goes on to where it was.
    void forgetTarget() { target = nullptr; }

  private:
    Object *object;
    Object *target;
};

} // namespace sv
