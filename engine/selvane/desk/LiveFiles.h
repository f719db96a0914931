/// The files of sprites and sounds while a game runs: one that is saved is loaded again, and every
/// object that has it shows or plays the new one. A faulty one changes nothing until it is mended.
///
/// Knows the files that the resource manager loads while this object lives. Game-loop thread only.
#pragma once

#include "selvane/platform/system.h"
#include "selvane/resources/ResourceManager.h"

#include <memory>
#include <string>
#include <vector>

namespace sv {

class LiveFiles {
  public:
    LiveFiles();
    ~LiveFiles();
    LiveFiles(const LiveFiles &) = delete;
    LiveFiles &operator=(const LiveFiles &) = delete;

    /// Loads the files that have changed since they were loaded, but not since the last look:
    /// an editor may be writing them still.
    void look();

    /// "sprites/ship.txt:7: Width is 4, expected 5." for the first file that is faulty; empty if
    /// none is.
    std::string getFault() const;

  private:
    struct File {
        bool isSaved();

        LoadedFile origin;
        std::shared_ptr<Sprite *const> sprite; // Null: a sound, or never loaded.
        platform::FileStamp loaded;
        platform::FileStamp seen;
        std::string fault;
    };

    void add(const LoadedFile &origin);
    static void load(File &file);

    std::vector<File> files;
};

} // namespace sv
