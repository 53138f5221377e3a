#pragma once

#include <cstddef>

/// The layout of a Targa file of version 2: header, ID, colour map, pixels, areas that are not read, footer.
namespace VFoundation::TargaFormat {

constexpr std::size_t kHeaderSize = 18;
constexpr std::size_t kFooterSize = 26;

// Offsets in the header. Two-byte numbers are little-endian.
constexpr std::size_t kIDLength = 0;
constexpr std::size_t kColourMapType = 1;
constexpr std::size_t kImageType = 2;
constexpr std::size_t kWidth = 12;
constexpr std::size_t kHeight = 14;
constexpr std::size_t kPixelDepth = 16;
constexpr std::size_t kDescriptor = 17;

constexpr unsigned char kTrueColour = 2;
constexpr unsigned char kEightAlphaBits = 8;

/// The end of the footer: 16 characters that tell the version, a full stop and a zero.
constexpr char kSignature[] = "TRUEVISION-XFILE.";
constexpr std::size_t kSignatureSize = sizeof kSignature;
constexpr std::size_t kComparedSignatureSize = 16;

} // namespace VFoundation::TargaFormat
