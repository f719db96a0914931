#include "selvane/display/SfmlMessages.h"

#include "selvane/core/LogManager.h"

#include <SFML/System/Err.hpp>

#include <mutex>
#include <sstream>
#include <utility>

namespace sv {

namespace {

/// One for the process, never destroyed: a thread of SFML may still write into it when the
/// SfmlMessages object is gone, and a global object may read a file after main().
class Collector : public std::streambuf {
  public:
    std::string take() {
        const std::lock_guard lock(mutex);
        return std::exchange(text, {});
    }

  protected:
    int_type overflow(int_type c) override {
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            const std::lock_guard lock(mutex);
            text += traits_type::to_char_type(c);
        }
        return traits_type::not_eof(c);
    }

    std::streamsize xsputn(const char *s, std::streamsize count) override {
        const std::lock_guard lock(mutex);
        text.append(s, static_cast<std::size_t>(count));
        return count;
    }

  private:
    std::mutex mutex;
    std::string text;
};

Collector &collector() {
    static Collector &instance = *new Collector;
    return instance;
}

} // namespace

SfmlMessages::SfmlMessages() : usual_buffer(sf::err().rdbuf(&collector())) {}

SfmlMessages::~SfmlMessages() {
    sf::err().rdbuf(usual_buffer);
    std::istringstream text(take());
    for (std::string line; std::getline(text, line);)
        if (!line.empty())
            logLine("SFML: %s", line.c_str());
}

std::string SfmlMessages::take() {
    return collector().take();
}

} // namespace sv
