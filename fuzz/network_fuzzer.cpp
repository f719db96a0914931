// A peer's bytes into the network manager, over a real connection. What is heard of them is held
// against what the bytes say.
//
// The first byte of an input is how many bytes the peer sends before each step, 0 for all at once;
// it makes a few pieces at most, since the systems let a small one wait for the answer to those
// before it. The bits of the second byte are a Manner.

#include "fuzzing.h"
#include "selvane/core/EventNetwork.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/platform/sockets.h"
#include "selvane/platform/system.h"
#include "selvane/world/Object.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

using sv::platform::Socket;

sv::NetworkManager &network() {
    return sv::NetworkManager::getInstance();
}

constexpr std::size_t most_pieces = 8;

struct Manner {
    explicit Manner(unsigned bits)
        : hangs_up((bits & 1) != 0), is_deaf((bits & 2) != 0), answers((bits & 4) != 0) {}

    bool hangs_up; ///< The peer, at the end.
    bool is_deaf;  ///< The game: it leaves every message where it is.
    bool answers;  ///< The game: each message with itself. The peer never reads.

    /// A peer that hangs up on what it has not read takes back what is still on its way.
    bool mayLose() const { return hangs_up && answers; }
};

class Ear : public sv::Object {
  public:
    explicit Ear(Manner new_manner) : manner(new_manner) { registerInterest(sv::NETWORK_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        const auto &event = dynamic_cast<const sv::EventNetwork &>(*p_event);
        if (event.getLabel() != sv::NETWORK_MESSAGE || manner.is_deaf)
            return 0;
        std::string message;
        const int length = network().receive(message, event.getSocketIndex());
        if (length < sv::MESSAGE_LENGTH_BYTES)
            return 0;
        fuzz::require(length == event.getBytes() && message.size() == std::size_t(length));
        if (manner.answers)
            network().send(message, event.getSocketIndex());
        heard.push_back(message);
        return 1;
    }

    const Manner manner;
    std::vector<std::string> heard;
};

/// The messages at the front of `bytes`, taken off it.
std::vector<std::string> takeMessages(std::string_view &bytes) {
    std::vector<std::string> messages;
    while (bytes.size() >= sv::MESSAGE_LENGTH_BYTES) {
        const int length = sv::messageLength(bytes);
        if (length < sv::MESSAGE_LENGTH_BYTES || static_cast<std::size_t>(length) > bytes.size())
            break;
        messages.emplace_back(bytes.substr(0, static_cast<std::size_t>(length)));
        bytes.remove_prefix(static_cast<std::size_t>(length));
    }
    return messages;
}

bool isRefused(std::string_view bytes) {
    if (bytes.size() < sv::MESSAGE_LENGTH_BYTES)
        return false;
    const int length = sv::messageLength(bytes);
    return length < sv::MESSAGE_LENGTH_BYTES || length > sv::MAX_MESSAGE_BYTES;
}

/// As the game loop does it, which gives a deaf game no more than a fifth of the frame.
void step(bool is_deaf) {
    int rounds = 0;
    while (network().genDataEvents(0) > 0 && !(is_deaf && ++rounds == 3)) {
    }
    network().endStep();
}

/// Steps until `is_done`, for a second at most: what was sent is there at once, nearly always.
template<typename IsDone>
void stepUntil(bool is_deaf, IsDone is_done) {
    for (int tries = 0; tries < 1000; ++tries) {
        step(is_deaf);
        if (is_done())
            return;
        sv::platform::timeSource().sleep(1);
    }
    fuzz::require(false);
}

void sendInPieces(Socket peer, std::string_view bytes, std::size_t piece, bool is_deaf) {
    while (!bytes.empty()) {
        const std::size_t size = std::min(piece, bytes.size());
        const int sent = sv::platform::send(peer, bytes.data(), static_cast<int>(size));
        if (sent <= 0)
            return; // The game has closed.
        bytes.remove_prefix(static_cast<std::size_t>(sent));
        step(is_deaf);
    }
}

/// What was heard is what was sent.
void examine(const Ear &ear, const std::vector<std::string> &sent) {
    fuzz::require(ear.heard.size() <= sent.size());
    fuzz::require(std::equal(ear.heard.begin(), ear.heard.end(), sent.begin()));
    fuzz::require(ear.heard.size() == sent.size() || ear.manner.is_deaf || ear.manner.mayLose());
}

void talk(Ear &ear, std::string_view bytes, std::size_t piece) {
    const Manner manner = ear.manner;
    const Socket peer = sv::platform::connectTo(sv::LOOPBACK_ADDRESS, network().getPort());
    fuzz::require(peer != sv::platform::no_socket);
    while (network().accept() < 0) {
    }
    sendInPieces(peer, bytes, piece, manner.is_deaf);

    const auto sent = takeMessages(bytes);
    const int open = isRefused(bytes) || manner.hangs_up ? 0 : 1;
    if (manner.hangs_up)
        sv::platform::closeSocket(peer);
    if (manner.is_deaf)
        step(true);
    else
        stepUntil(false, [&] {
            return network().getNumConnections() == open &&
                   (ear.heard.size() >= sent.size() || manner.mayLose());
        });
    examine(ear, sent);
    if (!manner.hangs_up)
        sv::platform::closeSocket(peer);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/) {
    const fuzz::Input none(nullptr, 0);
    fuzz::require(network().startUp() == 0 && network().setServer(0) == 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Input input(data, size);
    if (size < 2)
        return -1;
    const std::size_t piece = data[0] != 0 ? data[0] : size;
    Ear ear{Manner(data[1])};
    talk(ear, std::string_view(input.text).substr(2), std::max(piece, size / most_pieces));
    while (network().getNumConnections() > 0)
        network().close(0);
    return 0;
}
