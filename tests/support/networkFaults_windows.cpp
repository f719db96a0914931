#include "support/networkFaults.h"

#include <winsock2.h>

namespace test {

bool dropIncoming(sv::platform::Socket /*socket*/) {
    return false;
}

void stopSending(sv::platform::Socket socket) {
    shutdown(static_cast<SOCKET>(socket), SD_SEND);
}

void shrinkSendBuffer(sv::platform::Socket socket) {
    constexpr int bytes = 8192;
    setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_SNDBUF,
               reinterpret_cast<const char *>(&bytes), sizeof bytes);
}

std::vector<int> socketOptions(sv::platform::Socket /*socket*/) {
    return {};
}

Interruptions::Interruptions() = default;

Interruptions::~Interruptions() = default;

} // namespace test
