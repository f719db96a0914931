#include "sounds/notes.h"

#include <sstream>

namespace sounds {

namespace {

constexpr int LOUD = 135;
constexpr int NORMAL = 100;
constexpr int SOFT = 60;

int semitoneOf(char letter) {
    constexpr std::string_view letters = "c d ef g a b";
    const auto found = letters.find(letter);
    return letter == ' ' || found == std::string_view::npos ? -1 : static_cast<int>(found);
}

/// Removes the first note of a word like "a4c#5e5" and returns its pitch, or -1.
int takeNote(std::string_view &word) {
    int pitch = semitoneOf(word.front());
    word.remove_prefix(1);
    if (pitch < 0 || word.empty())
        return -1;
    if (word.front() == '#' || word.front() == 'b') {
        pitch += word.front() == '#' ? 1 : -1;
        word.remove_prefix(1);
    }
    if (word.empty() || word.front() < '1' || word.front() > '7')
        return -1;
    pitch += 12 * (word.front() - '0');
    word.remove_prefix(1);
    return pitch;
}

int takeLoudness(std::string_view &word) {
    if (word.back() != '!' && word.back() != '?')
        return NORMAL;
    const int loudness = word.back() == '!' ? LOUD : SOFT;
    word.remove_suffix(1);
    return loudness;
}

class Reader {
  public:
    Reader(const Instrument &of, std::vector<Note> &into) : instrument(of), notes(into) {}

    bool read(std::string_view word) {
        const bool is_good = word == "-" ? hold() : begin(word);
        ++step;
        return is_good;
    }

  private:
    bool hold() {
        for (std::size_t i = sounding; i < notes.size(); ++i)
            ++notes[i].steps;
        return sounding < notes.size();
    }

    bool begin(std::string_view word) {
        sounding = notes.size();
        if (word == ".")
            return true;
        const int loudness = takeLoudness(word);
        if (word == "x")
            word = instrument.x;
        if (word.empty())
            return false;
        while (!word.empty()) {
            const int pitch = takeNote(word);
            if (pitch < 0)
                return false;
            notes.push_back({step, 1, pitch, loudness});
        }
        return true;
    }

    const Instrument &instrument;
    std::vector<Note> &notes;
    std::size_t sounding = notes.size(); // The first of the notes that a "-" holds.
    int step = 0;
};

/// What is wrong with the bar; empty if nothing is.
std::string readBar(const std::string &bar, Reader &reader) {
    std::istringstream words(bar);
    int steps = 0;
    for (std::string word; words >> word; ++steps)
        if (!reader.read(word))
            return "'" + word.append("' is not allowed there");
    if (steps != STEPS_IN_A_BAR)
        return "it has " + std::to_string(steps).append(" steps");
    return "";
}

} // namespace

int readNotes(const Part &part, int bars, std::vector<Note> &notes, std::string &error) {
    Reader reader(*part.instrument, notes);
    for (int number = 0; number < bars; ++number) {
        const std::string bar(part.bars[static_cast<std::size_t>(number) % part.bars.size()]);
        const std::string fault = readBar(bar, reader);
        if (!fault.empty()) {
            error = "bar '" + bar;
            error.append("': ").append(fault);
            return -1;
        }
    }
    return 0;
}

} // namespace sounds
