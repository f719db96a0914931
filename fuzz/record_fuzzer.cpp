// A record, played by a small game that takes keys, the mouse, messages and paths. The input is the
// record's blocks, each with its kind, two bytes of length and what is in it: the checksums are put
// right here, or nothing behind them would ever be read.

#include "fuzzing.h"
#include "selvane/core/Config.h"
#include "selvane/core/EventKeyboard.h"
#include "selvane/core/EventMouse.h"
#include "selvane/core/EventNetwork.h"
#include "selvane/core/EventStep.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/record/RecordFile.h"
#include "selvane/record/Replayer.h"
#include "selvane/record/recordSettings.h"
#include "selvane/world/Object.h"
#include "selvane/world/spawn.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr char file[] = "fuzz.record";
constexpr int most_steps = 30;

/// Input for a game that has no window and is not replaying any more.
class NoInput final : public sv::InputSource {
    State getState() override { return State::CLOSED; }
    std::optional<sv::InputItem> next() override { return std::nullopt; }
    bool hasFocus() override { return false; }
    bool isKeyDown(int /*sfml_key*/) override { return false; }
    bool isButtonDown(sv::EventMouseButton /*button*/) override { return false; }
    sv::Vector mousePosition() override { return {}; }
};

class Player : public sv::Object {
  public:
    Player() {
        for (const char *event : {sv::STEP_EVENT, sv::KEYBOARD_EVENT, sv::MOUSE_EVENT})
            registerInterest(event);
        registerInterest(sv::NETWORK_EVENT);
        sv::NetworkManager::getInstance().setServer(0);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (sv::eventCast<sv::EventStep>(p_event))
            takeStep();
        else if (const auto *key = sv::eventCast<sv::EventKeyboard>(p_event))
            setVelocity({static_cast<float>(key->getKey()) / 100, 0.5F});
        else if (const auto *mouse = sv::eventCast<sv::EventMouse>(p_event))
            setPosition(mouse->getMousePosition());
        else if (const auto *network = sv::eventCast<sv::EventNetwork>(p_event))
            takeMessage(network->getSocketIndex());
        else
            return sv::Object::eventHandler(p_event);
        return 1;
    }

  private:
    void takeStep() {
        findPath(sv::Vector{2, 3});
        sv::NetworkManager::getInstance().send(sv::makeMessage(serialize()), 0);
        if (++steps == most_steps)
            sv::GameManager::getInstance().setGameOver();
    }

    void takeMessage(int index) {
        std::string message;
        if (sv::NetworkManager::getInstance().receive(message, index) >= sv::MESSAGE_LENGTH_BYTES)
            deserialize(std::string(sv::messageBody(message)));
    }

    int steps = 0;
};

void writeRecord(std::string_view blocks) {
    sv::RecordWriter writer(file);
    while (blocks.size() >= 3) {
        const auto kind = static_cast<sv::BlockKind>(blocks[0]);
        const std::size_t size =
            static_cast<unsigned char>(blocks[1]) + 256U * static_cast<unsigned char>(blocks[2]);
        blocks.remove_prefix(3);
        writer.write(kind, blocks.substr(0, size));
        blocks.remove_prefix(std::min(size, blocks.size()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Input input(data, size);
    sv::LogManager::getInstance().setLogLevel(-1);
    writeRecord(input.text);
    const sv::ManualTime time;
    NoInput no_input;
    sv::InputManager::getInstance().setSource(&no_input);
    if (sv::Replayer::getInstance().start(file, {.is_fast = true}) != 0)
        return -1;
    sv::LogManager::getInstance().shutDown();
    sv::GameManager &game = sv::GameManager::getInstance();
    if (game.startUp() == 0) {
        sv::spawn<Player>();
        game.run();
    }
    game.shutDown();
    sv::resetRecords();
    sv::InputManager::getInstance().setSource(nullptr);
    sv::Manager::resetAll();
    return 0;
}
