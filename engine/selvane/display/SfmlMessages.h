/// What the media library complains about while this object lives, kept off standard error. At the
/// end of the object each line of it goes to the log.
///
/// To be put around one call that reads a file: the library has threads of its own, and what they
/// say at other times stays on standard error, because the log is the game loop's alone.
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

    /// What was said since the last call; it does not go to the log then.
    std::string take();

  private:
    std::streambuf *usual_buffer; // The library's own, which it gets back.
};

} // namespace sv
