#include "selvane/record/RecordFile.h"

#include "selvane/outside/checksum.h"
#include "selvane/platform/system.h"

#include <fstream>
#include <iterator>

namespace sv {

namespace {

/// A new number for each change of what the blocks contain.
constexpr std::string_view first_line = "Selvane record 1\n";

/// Kind, length and checksum.
constexpr std::size_t head_size = 1 + 4 + 8;

/// Lowest byte first.
std::string numberBytes(std::uint64_t number, int count) {
    std::string bytes;
    for (; count > 0; --count, number >>= 8)
        bytes += static_cast<char>(number & 0xFF);
    return bytes;
}

std::uint64_t numberOf(std::string_view bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
    return number;
}

std::string blockOf(BlockKind kind, std::string_view bytes) {
    std::string block = static_cast<char>(kind) + numberBytes(bytes.size(), 4);
    const std::uint64_t sum = checksum(block + std::string(bytes));
    block += numberBytes(sum, 8);
    return block += bytes;
}

} // namespace

std::string recordVersion() {
    return SELVANE_VERSION_TEXT;
}

RecordWriter::RecordWriter(const std::string &filename)
    : file(platform::isOtherThanFile(filename) ? nullptr : std::fopen(filename.c_str(), "wb")),
      is_good(file && std::fwrite(first_line.data(), first_line.size(), 1, file.get()) == 1) {}

void RecordWriter::write(BlockKind kind, std::string_view bytes) {
    if (!is_good)
        return;
    const std::string block = blockOf(kind, bytes);
    is_good =
        std::fwrite(block.data(), block.size(), 1, file.get()) == 1 && std::fflush(file.get()) == 0;
}

RecordReader::RecordReader(const std::string &filename) {
    std::ifstream file;
    if (!platform::isOtherThanFile(filename))
        file.open(filename, std::ios::binary);
    if (!file.is_open()) {
        state = State::CANNOT_OPEN;
        return;
    }
    bytes.assign(std::istreambuf_iterator<char>(file), {});
    rest = bytes;
    if (!rest.starts_with(first_line))
        state = State::NO_RECORD;
    rest.remove_prefix(std::min(first_line.size(), rest.size()));
}

std::optional<Block> RecordReader::next() {
    if (state != State::GOOD || rest.empty())
        return std::nullopt;
    const std::uint64_t length = rest.size() < head_size ? 0 : numberOf(rest.substr(1, 4));
    if (rest.size() < head_size + length) {
        state = State::CUT;
        return std::nullopt;
    }
    const auto kind = static_cast<BlockKind>(rest.front());
    const std::string_view block = rest.substr(0, head_size + length);
    if (block != blockOf(kind, block.substr(head_size))) {
        state = State::DAMAGED;
        return std::nullopt;
    }
    rest.remove_prefix(block.size());
    return Block{kind, std::string(block.substr(head_size))};
}

} // namespace sv
