/// Collects what SFML would write to standard error while this object lives. Its destructor writes
/// each line of it to the log.
///
/// Put it around a single call. SFML has threads of its own; what they write at other times stays
/// on standard error, because only the game loop may use the log.
#pragma once

#include <streambuf>
#include <string>

namespace sv {

class SfmlMessages {
  public:
    SfmlMessages();
    ~SfmlMessages();
    SfmlMessages(const SfmlMessages &) = delete;
    SfmlMessages &operator=(const SfmlMessages &) = delete;

    /// What was collected since the last call. It does not go to the log any more.
    std::string take();

  private:
    std::streambuf *usual_buffer; // SFML's own, which it gets back.
};

} // namespace sv
