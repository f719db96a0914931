#include "selvane/core/attributes.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"

#include <algorithm>
#include <string_view>

namespace sv {

std::string attribute(const std::string &key, const std::string &value) {
    return key + ":" + value + ",";
}

bool isAttributeWanted(const std::string &selector, const std::string &name, bool is_modified) {
    if (selector == ALL_ATTRIBUTES)
        return true;
    return selector.empty() ? is_modified : selector.find(name) != std::string::npos;
}

std::string attributeText(const std::string &text, const std::string &key) {
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));
        const std::size_t colon = item.find(':');
        if (colon != std::string_view::npos && withoutBlanksAround(item.substr(0, colon)) == key)
            return std::string(item.substr(colon + 1));
    }
    return "";
}

std::string attributeValue(const std::string &text, const std::string &key) {
    return text.empty() ? "" : match(text, key); // match() would search its previous text.
}

std::optional<int> AttributeReader::readInt(const std::string &key, const char *name) const {
    const std::string value = valueOf(key);
    if (value.empty())
        return std::nullopt;
    const int number = parseInt(value);
    logLine(log_level, "%s %s is %d", prefix, name ? name : key.c_str(), number);
    return number;
}

std::optional<float> AttributeReader::readFloat(const std::string &key, const char *name) const {
    const std::string value = valueOf(key);
    if (value.empty())
        return std::nullopt;
    const float number = parseFloat(value);
    logLine(log_level, "%s %s is %.2f", prefix, name ? name : key.c_str(), double{number});
    return number;
}

std::optional<bool> AttributeReader::readBool(const std::string &key, const char *name) const {
    const std::string value = valueOf(key);
    if (value.empty())
        return std::nullopt;
    log(name ? name : key, value, "");
    return value == "true";
}

std::string AttributeReader::readText(const std::string &key, const char *quote) const {
    std::string value = attributeText(text, key);
    log(key, value, quote);
    return value;
}

std::string AttributeReader::readWord(const std::string &key, const char *quote) const {
    std::string value = valueOf(key);
    log(key, value, quote);
    return value;
}

void AttributeReader::log(const std::string &name, const std::string &value,
                          const char *quote) const {
    if (!value.empty())
        logLine(log_level, "%s %s is %s%s%s", prefix, name.c_str(), quote, printable(value).c_str(),
                quote);
}

} // namespace sv
