#include "selvane/record/RecordedGame.h"

#include "selvane/outside/packing.h"

#include <optional>
#include <string_view>

namespace sv {

namespace {

const char *describe(RecordReader::State state) {
    switch (state) {
    case RecordReader::State::CANNOT_OPEN:
        return "cannot be opened";
    case RecordReader::State::NO_RECORD:
        return "is no record, or one of another version";
    case RecordReader::State::GOOD:
    case RecordReader::State::CUT:
    case RecordReader::State::DAMAGED:
        break;
    }
    return "has no whole beginning";
}

} // namespace

RecordedGame::RecordedGame(const std::string &filename) : reader(filename) {
    const std::optional<Block> block = reader.next();
    std::string_view bytes = block ? block->bytes : std::string_view();
    const auto version_text = unpackText(bytes);
    const auto is_of_running = unpackNumber(bytes);
    if (!block || block->kind != BlockKind::BEGIN || !version_text || !is_of_running ||
        !world.apply(bytes)) {
        problem = describe(reader.getState());
        return;
    }
    version = *version_text;
    is_of_running_game = *is_of_running != 0;
}

RecordedGame::Next RecordedGame::next() {
    const std::optional<Block> block = reader.next();
    if (!block)
        return reader.getState() == RecordReader::State::DAMAGED ? Next::DAMAGE : Next::CUT;
    if (block->kind == BlockKind::STOP)
        return Next::STOP;
    std::string_view bytes = block->bytes;
    if (!tape.unpack(bytes))
        return Next::DAMAGE;
    if (block->kind == BlockKind::EXIT)
        return Next::EXIT;
    return world.apply(bytes) ? Next::STEP : Next::DAMAGE;
}

} // namespace sv
