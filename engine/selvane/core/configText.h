/// The text of a configuration file: its lines, and what a person who wrote it did not mean.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sv {

/// A line of the file that takes part, without its line end.
struct ConfigLine {
    int number = 0; ///< In the file, from 1.
    std::string text;
};

/// The lines of a file's text; those that are empty or begin with '#' are left out.
std::vector<ConfigLine> configLines(const std::string &text);

enum class SettingKind { INTEGER, MILLISECONDS, NUMBER, FLAG, TEXT };

/// A setting that there is.
struct SettingName {
    std::string_view key;
    SettingKind kind = SettingKind::TEXT;
};

struct ConfigFault {
    int line = 0;
    std::string text; ///< A sentence that says what is wrong and, where it can, what was meant.
};

/// What in these lines will not do what it looks like, one fault for each entry and no more than a
/// screen of them. That a value is none of its setting's names is for the setting to say.
std::vector<ConfigFault> configFaults(std::span<const ConfigLine> lines,
                                      std::span<const SettingName> settings);

} // namespace sv
