#pragma once

namespace VFoundation {

class PixelBuffer;
class VBitmapImage;

/// Fills `pixels`, whose size it keeps, with the scaled bitmap. False when there is no memory for the work, or it would
/// need more than `VBitmapImage::kMaxScalingMemory`.
bool ScalePixels(VBitmapImage const& bitmap, PixelBuffer& pixels) noexcept;

} // namespace VFoundation
