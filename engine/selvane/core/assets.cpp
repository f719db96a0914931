#include "selvane/core/assets.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/platform/system.h"

#include <optional>
#include <utility>
#include <vector>

namespace sv {

namespace {

/// The fonts that serve where a game brings none of these names.
constexpr std::pair<const char *, const char *> distribution_fonts[] = {
    {FONT_FILE_DEFAULT, SELVANE_DEFAULT_FONT}, {FALLBACK_FONT_DEFAULT, SELVANE_FALLBACK_FONT}};

/// Where a file is looked for that is not in the working folder. The nearest comes first.
std::vector<std::string> furtherFolders() {
    const platform::Program program = platform::runningProgram();
    if (program.folder.empty())
        return {};
    const std::string prefix = program.folder.substr(0, program.folder.find_last_of("/\\"));
    return {program.folder, prefix + "/share/selvane/" + program.name};
}

/// Nothing if there is no such file. Whatever has the name in the working folder is taken: if it is
/// no file, it is refused when it is opened.
std::optional<std::string> search(const std::string &name) {
    if (platform::isAbsolute(name) || platform::isFile(name) || platform::isOtherThanFile(name))
        return name;
    for (const std::string &folder : furtherFolders())
        if (std::string path = std::string(folder).append("/").append(name); platform::isFile(path))
            return path;
    return std::nullopt;
}

std::string logFound(const std::string &name, const std::string &path) {
    if (path != name)
        logLine(1, "findAsset(): Found '%s' as '%s'.", name.c_str(),
                platform::inUtf8(path).c_str());
    return path;
}

} // namespace

std::string findAsset(const std::string &name) {
    return logFound(name, search(name).value_or(name));
}

std::string findFont(const std::string &name) {
    std::string otherwise = name;
    for (const auto &[default_name, font] : distribution_fonts)
        if (name == default_name && platform::isFile(font))
            otherwise = font;
    return logFound(name, search(name).value_or(otherwise));
}

void logSearch(const std::string &name, int level) {
    if (search(name))
        return;
    constexpr std::size_t capacity = 4096;
    const std::string working_folder = platform::workingDirectory(capacity);
    std::string folders = "'" + working_folder + "'";
    for (const std::string &further : furtherFolders())
        if (const std::string folder = platform::inUtf8(further); folder != working_folder)
            folders += ", '" + folder + "'";
    logLine(level, "findAsset(): Note! '%s' was looked for in %s.", name.c_str(), folders.c_str());
}

} // namespace sv
