/// Text helpers for the configuration, the log and the attribute texts. match() and getTimeString()
/// keep state between calls: game-loop thread only.
#pragma once

#include <string>
#include <string_view>

namespace sv {

/// Some editors put it before a text, invisibly.
inline constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// White space.
inline constexpr std::string_view BLANKS = " \t\n\v\f\r";

std::string_view withoutBlanksAround(std::string_view text);

/// Looks a key up in a text of the form `key:value,key:value,` and returns its value; an empty
/// text if the key is absent or has none.
///
/// All white space is removed, also inside values; a value ends at a second colon; empty entries
/// are skipped; keys are case-sensitive, and the first of two equal ones wins.
///
/// An empty `str` searches the text of the previous call again; attributeValue() does not.
std::string match(const std::string &str, const std::string &find);

/// "true" or "false".
std::string boolToString(bool b);

std::string toString(int i);

/// At most six significant digits in the shortest general form: "0.5", "2", "1e+06".
std::string toString(float f);

/// The integer at the start of a text: blanks, a sign, digits; the rest is ignored. 0 if there is
/// none. Saturates at the limits of int.
int parseInt(std::string_view text);

/// The number at the start of a text, as parseInt() reads it; 0 if there is none. Infinite beyond a
/// float's range; "inf" and "nan" are numbers too.
float parseFloat(std::string_view text);

/// A text for the log: each control character (a byte below 32, or 127) becomes '?', so that a
/// peer's text cannot forge a line or send commands to a terminal. Bytes above 127 stay: they are
/// UTF-8.
std::string printable(std::string_view text);

/// The local time as "hh:mm:ss", or "(time error)" if it is not available. The next call overwrites
/// the text.
const char *getTimeString();

} // namespace sv
