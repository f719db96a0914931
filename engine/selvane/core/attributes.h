/// The text form of attributes that objects, animations and view objects share: `key:value,` items
/// with nothing between them. Numbers and flags are read without their blanks; a value that is a
/// text comes back exactly as it was written.
#pragma once

#include <optional>
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

/// As match(), but an empty text has no values.
std::string attributeValue(const std::string &text, const std::string &key);

/// Reads the values of one text and logs each that it finds, as "<prefix> <name> is <value>". A key
/// that is absent or has no value gives nothing, or an empty text. Borrows its text.
class AttributeReader {
  public:
    /// `prefix`: what log lines begin with, as "Object::deserialize():".
    AttributeReader(const std::string &new_text, const char *new_prefix, int new_log_level)
        : text(new_text), prefix(new_prefix), log_level(new_log_level) {}

    bool has(const std::string &key) const { return !valueOf(key).empty(); }

    // `name` is what the log calls the value. Default: its key.

    std::optional<int> readInt(const std::string &key, const char *name = nullptr) const;
    std::optional<float> readFloat(const std::string &key, const char *name = nullptr) const;

    /// True only for exactly "true".
    std::optional<bool> readBool(const std::string &key, const char *name = nullptr) const;

    /// With its blanks; the log puts it between two of `quote`.
    std::string readText(const std::string &key, const char *quote = "") const;

    /// The same without its blanks, as numbers are read.
    std::string readWord(const std::string &key, const char *quote = "") const;

    /// As readText(), and not logged.
    std::string textOf(const std::string &key) const { return attributeText(text, key); }

  private:
    std::string valueOf(const std::string &key) const { return attributeValue(text, key); }
    void log(const std::string &name, const std::string &value, const char *quote) const;

    const std::string &text;
    const char *prefix;
    int log_level;
};

} // namespace sv
