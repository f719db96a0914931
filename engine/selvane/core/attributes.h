/// The text form of attributes that objects, animations and view objects share: `key:value,` items
/// with nothing between them. Numbers and flags are read with match(), which removes blanks; a
/// value that is a text comes back exactly as it was written, with attributeText().
#pragma once

#include <string>

namespace sv {

/// Selects every attribute.
inline constexpr char ALL_ATTRIBUTES[] = "ALL";

/// One item: "key:value,". REQUIRES: no comma in `value`.
std::string attribute(const std::string &key, const std::string &value);

/// Whether an attribute is to be written. The selector is "ALL"; or empty, for what changed; or a
/// list of names, each with a comma behind it. `name` has its comma too, and is looked for
/// anywhere in the list: "FOLLOW_PATH," also selects "PATH,".
bool isAttributeWanted(const std::string &selector, const std::string &name, bool is_modified);

/// What follows the first `key:` of `text` up to the next comma, blanks and colons included; empty
/// if the key is absent. Blanks around the key do not count.
std::string attributeText(const std::string &text, const std::string &key);

} // namespace sv
