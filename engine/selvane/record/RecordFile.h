/// The file of a record: a line that says what it is, and blocks, each with its length and a
/// checksum. A game that dies leaves a file that is cut, and good up to the last whole block.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace sv {

/// A record begins with the engine's version and the world as it was, and goes on with steps. The
/// last block says whether the game stopped recording or the process ended.
enum class BlockKind : char { BEGIN = 'B', STEP = 'S', STOP = 'T', EXIT = 'E' };

/// The engine's version, as records have it.
std::string recordVersion();

struct Block {
    BlockKind kind = BlockKind::STEP;
    std::string bytes;
};

class RecordWriter {
  public:
    /// Overwrites the file. See isGood().
    explicit RecordWriter(const std::string &filename);

    /// The block is in the system's hands when it returns.
    void write(BlockKind kind, std::string_view bytes);

    /// Whether the file was opened and everything could be written so far.
    bool isGood() const { return is_good; }

  private:
    struct Closer {
        void operator()(std::FILE *open) const { std::fclose(open); }
    };

    std::unique_ptr<std::FILE, Closer> file;
    bool is_good;
};

class RecordReader {
  public:
    enum class State { GOOD, CANNOT_OPEN, NO_RECORD, CUT, DAMAGED };

    /// Reads the whole file.
    explicit RecordReader(const std::string &filename);

    /// The next block; none at the end of the file, or where it is no longer good.
    std::optional<Block> next();

    State getState() const { return state; }

  private:
    std::string bytes;
    std::string_view rest; // Of the bytes.
    State state = State::GOOD;
};

} // namespace sv
