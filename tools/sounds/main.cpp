#include "sounds/render.h"

#include <fstream>
#include <iostream>

namespace {

int make(const sounds::Piece &piece, const std::string &tree) {
    std::string error;
    const auto samples = sounds::render(piece, error);
    if (samples.empty()) {
        std::cerr << piece.file << ": " << error << '\n';
        return -1;
    }
    const std::string path = tree + '/' + std::string(piece.file);
    std::ofstream file(path, std::ios::binary);
    file << sounds::waveFile(samples) << std::flush;
    if (!file) {
        std::cerr << path << " cannot be written\n";
        return -1;
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc != 2) {
        std::cerr << "usage: make_sounds TREE\n";
        return 1;
    }
    for (const sounds::Piece &piece : sounds::score())
        if (make(piece, argv[1]) != 0)
            return 1;
    return 0;
}
