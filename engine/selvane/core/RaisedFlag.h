/// Sets a flag and restores its former value at the end of the block.
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
