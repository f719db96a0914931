/// Reads the bars of a part.
#pragma once

#include "sounds/Score.h"

#include <string>
#include <vector>

namespace sounds {

struct Note {
    int start;    ///< Steps since the piece began.
    int steps;    ///< How long it is held.
    int pitch;    ///< Semitones above c0.
    int loudness; ///< Percent.
};

/// Adds the notes of a part, in a piece of that many bars. Returns 0, or -1 with the reason in
/// `error` if a bar is not written as Part describes.
int readNotes(const Part &part, int bars, std::vector<Note> &notes, std::string &error);

} // namespace sounds
