/// What a sprite, a sound and a music track have in common: the label that it is found by.
#pragma once

#include <string>
#include <utility>

namespace sv {

class Resource {
  public:
    Resource(const Resource &) = delete;
    Resource &operator=(const Resource &) = delete;

    /// "[Undefined]" until one is set.
    const std::string &getLabel() const { return label; }
    void setLabel(std::string new_label) { label = std::move(new_label); }

  protected:
    Resource() = default;
    ~Resource() = default;

  private:
    std::string label = "[Undefined]";
};

} // namespace sv
