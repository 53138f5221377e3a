#pragma once

#include "foundation/host/internal/HostServices.h"

#include <string>
#include <string_view>
#include <vector>

/// The volumes as Linux lists them.
namespace VFoundation::MountTable {

/// The volumes of a mount table in the format of /proc/self/mountinfo, named by the links in `labelDirectory` to the
/// devices they are on. Without memory `std::bad_alloc`.
std::vector<HostServices::MountedVolume> Volumes(char const* mountTable, char const* labelDirectory);

/// The text of a label from the name of its link, in which "\x20" stands for a byte that a file name cannot hold.
std::string DecodeLabel(std::string_view link);

} // namespace VFoundation::MountTable
