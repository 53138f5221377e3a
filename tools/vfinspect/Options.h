#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vfinspect {

enum class Action { kTree, kCheck, kJson, kExtract, kSvg, kDot, kHelp, kVersion };
enum class Kind { kXml, kChunks, kArchive, kTarga, kPng, kJpeg };

struct Options {
    Action action = Action::kTree;
    std::string folder; // to extract to
    std::optional<Kind> kind;
    std::optional<bool> isLittleEndian;
    std::optional<bool> isPadded;
    std::vector<std::string> files;
};

extern char const* const kHelp;

/// False, with what is wrong in `error`, when the arguments (without the program's name) cannot be followed.
bool ParseOptions(std::vector<std::string> const& arguments, Options& options, std::string& error);

/// The kind that `name`, as after "--as", stands for.
std::optional<Kind> KindNamed(std::string const& name);

} // namespace vfinspect
