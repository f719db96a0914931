/// A message on the network: a length of four bytes in the machine's byte order, then the body. The
/// length counts the whole message, its own four bytes included.
#pragma once

#include <string>
#include <string_view>

namespace sv {

/// Bytes of the length field; no message is shorter.
inline constexpr int MESSAGE_LENGTH_BYTES = 4;

/// Bytes of the longest message. It waits in the socket until all of it has arrived, so it must fit
/// into the socket's buffer, of which a system may use half for its own bookkeeping.
inline constexpr int MAX_MESSAGE_BYTES = 64 * 1024;

/// Bytes that may wait on a connection whose peer reads too slowly.
inline constexpr int MAX_UNSENT_BYTES = 4 * MAX_MESSAGE_BYTES;

/// A message with that body, ready to be sent.
std::string makeMessage(std::string_view body);

/// What follows the length field; a view into `message`. REQUIRES: at least MESSAGE_LENGTH_BYTES.
std::string_view messageBody(std::string_view message);

/// The value of the length field. REQUIRES: at least MESSAGE_LENGTH_BYTES.
int messageLength(std::string_view message);

} // namespace sv
