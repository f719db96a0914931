#include "selvane/core/attributes.h"

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

} // namespace sv
