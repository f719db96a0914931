/// The text of a configuration file: its lines, and likely mistakes in it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sv {

/// A line of the file with settings, without its line end.
struct ConfigLine {
    int number = 0; ///< In the file, from 1.
    std::string text;
};

/// The lines of a file's text; those that are empty or begin with '#' are left out.
std::vector<ConfigLine> configLines(const std::string &text);

enum class SettingKind { INTEGER, MILLISECONDS, NUMBER, FLAG, TEXT };

/// A setting that exists.
struct SettingName {
    std::string_view key;
    SettingKind kind = SettingKind::TEXT;
};

struct ConfigFault {
    int line = 0;
    std::string text; ///< A sentence: what is wrong and, if that can be guessed, what was meant.
};

/// The entries that will not do what they look like: one fault each, at most 20. Values that are
/// not among a setting's names are not included: the setting logs those.
std::vector<ConfigFault> configFaults(std::span<const ConfigLine> lines,
                                      std::span<const SettingName> settings);

} // namespace sv
