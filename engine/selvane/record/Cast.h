/// A game as a film for terminals: a file in the format asciicast, version 2, which `asciinema
/// play` shows and web pages embed. One line for each frame that differs from the one before: the
/// time in seconds and what a terminal is to print.
#pragma once

#include <fstream>
#include <string>

namespace sv {

class Cast {
  public:
    /// Overwrites the file. Cells.
    Cast(const std::string &filename, int columns, int rows);

    /// False once something could not be written.
    bool isGood() const { return file.good(); }

    /// A frame as screenText() and screenColors() have it, and when it is shown.
    void add(int milliseconds, const std::string &screen, const std::string &colors);

  private:
    std::ofstream file;
    std::string shown;
};

} // namespace sv
