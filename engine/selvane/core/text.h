/// Text helpers that the configuration, the log and the attribute texts share. match() and
/// getTimeString() keep state between calls: game-loop thread only.
#pragma once

#include <string>
#include <string_view>

namespace sv {

/// What some editors write in front of a text, and do not show.
inline constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// White space.
inline constexpr std::string_view BLANKS = " \t\n\v\f\r";

std::string_view withoutBlanksAround(std::string_view text);

/// Looks a key up in a text of the form `key:value,key:value,` and returns its value; an empty
/// text if the key is absent or has none.
///
/// White space is removed wherever it stands, values included; a value ends at its second colon;
/// empty entries are skipped; keys are case-sensitive and the first of two equal ones wins.
///
/// An empty `str` means: look in the text of the previous call again. A caller with nothing to
/// look in returns before it asks.
std::string match(const std::string &str, const std::string &find);

/// "true" or "false".
std::string boolToString(bool b);

std::string toString(int i);

/// At most six significant digits in the shortest general form: "0.5", "2", "1e+06".
std::string toString(float f);

/// The integer at the start of a text: blanks, a sign, digits; what follows is ignored. 0 where
/// there is none. A number beyond an int's range gives the nearest int.
int parseInt(std::string_view text);

/// The number at the start of a text, as parseInt does; 0 where there is none. Infinite beyond a
/// float's range; "inf" and "nan" are numbers too.
float parseFloat(std::string_view text);

/// The text as a line of the log shows it: each control character (a byte below 32, or 127) is a
/// '?', so that a peer's text cannot begin a line of its own or command a terminal. Bytes above 127
/// stay, they are UTF-8.
std::string printable(std::string_view text);

/// The local time as "hh:mm:ss", or "(time error)" if it cannot be had. The text lives in one
/// buffer that the next call overwrites.
const char *getTimeString();

} // namespace sv
