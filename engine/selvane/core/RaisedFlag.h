/// Sets a flag for as long as it lives, whatever ends the block, and leaves it as it was.
#pragma once

#include <utility>

namespace sv {

class RaisedFlag {
  public:
    explicit RaisedFlag(bool &new_flag) : flag(new_flag), before(std::exchange(new_flag, true)) {}
    ~RaisedFlag() { flag = before; }
    RaisedFlag(const RaisedFlag &) = delete;
    RaisedFlag &operator=(const RaisedFlag &) = delete;

  private:
    bool &flag;
    bool before;
};

} // namespace sv
