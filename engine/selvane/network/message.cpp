#include "selvane/network/message.h"

#include "selvane/platform/sockets.h"

#include <cstdint>
#include <cstring>

namespace sv {

static_assert(MAX_MESSAGE_BYTES == platform::receive_buffer_bytes / 2);
static_assert(sizeof(std::int32_t) == MESSAGE_LENGTH_BYTES);

std::string makeMessage(std::string_view body) {
    const auto length = static_cast<std::int32_t>(MESSAGE_LENGTH_BYTES + body.size());
    std::string message(MESSAGE_LENGTH_BYTES, '\0');
    std::memcpy(message.data(), &length, sizeof length);
    return message.append(body);
}

std::string_view messageBody(std::string_view message) {
    return message.substr(MESSAGE_LENGTH_BYTES);
}

int messageLength(std::string_view message) {
    std::int32_t length = 0;
    std::memcpy(&length, message.data(), sizeof length);
    return length;
}

} // namespace sv
