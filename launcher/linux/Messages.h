#pragma once

#include <initializer_list>
#include <string>
#include <utility>

namespace Launcher {

/// `text` in the user's language, in UTF-8, from the catalogues in the bundle's Resources/locale; `text` itself
/// where there is none. For texts that people read and no program compares.
///
/// Each "{name}" in the translation becomes the value given for that name. The process's locale is not changed.
std::string Translated(char const* text,
                       std::initializer_list<std::pair<char const*, std::string>> values = {});

} // namespace Launcher
