#include "support/networkFaults.h"

#include <winsock2.h>

namespace test {

bool dropIncoming(sv::platform::Socket /*socket*/) {
    return false;
}

void stopSending(sv::platform::Socket socket) {
    shutdown(static_cast<SOCKET>(socket), SD_SEND);
}

std::vector<int> socketOptions(sv::platform::Socket /*socket*/) {
    return {};
}

void interruptCalls() {}

bool allowNoMoreFiles() {
    return false;
}

void allowMoreFiles() {}

} // namespace test
