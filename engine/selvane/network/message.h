/// How messages travel: a length of four bytes, in the byte order of the machine, and then the
/// body. The length counts the whole message, its own four bytes included.
///
/// Plain functions of their arguments.
#pragma once

#include <string>
#include <string_view>

namespace sv {

/// Bytes of the length field: no message is shorter.
inline constexpr int MESSAGE_LENGTH_BYTES = 4;

/// Bytes of the longest message. A message waits in the socket until all of it is there, so it has
/// to fit into the socket's buffer, of which the systems spend up to half on their own accounts.
inline constexpr int MAX_MESSAGE_BYTES = 64 * 1024;

/// Bytes of messages that may wait on a connection for a peer that reads too slowly.
inline constexpr int MAX_UNSENT_BYTES = 4 * MAX_MESSAGE_BYTES;

/// The message with that body, ready to be sent.
std::string makeMessage(std::string_view body);

/// What follows the length field. REQUIRES: at least MESSAGE_LENGTH_BYTES.
std::string_view messageBody(std::string_view message);

/// What the length field says. REQUIRES: at least MESSAGE_LENGTH_BYTES.
int messageLength(std::string_view message);

} // namespace sv
