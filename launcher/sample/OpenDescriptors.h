#pragma once

#include <string>
#include <utility>
#include <vector>

/// The files that this process has open: the number of each and what the system says of where it leads. Empty where the
/// system does not tell.
std::vector<std::pair<std::string, std::string>> OpenDescriptors();
