#pragma once

#include "foundation/image/VBitmapImage.h"

#include <cstdio>

namespace VFoundation {

/// Writes the bitmap as a Targa file, from its bottom row on with `flip`. Its sides are at most
/// `VImageIOTarga::kMaxSide`. False when a write fails.
bool EncodeTarga(VBitmapImage const& bitmap, bool flip, std::FILE* file);

} // namespace VFoundation
