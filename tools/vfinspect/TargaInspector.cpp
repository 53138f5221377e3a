#include "tools/vfinspect/TargaInspector.h"

#include "foundation/image/VImageIOTarga.h"
#include "foundation/image/internal/TargaFormat.h"
#include "tools/vfinspect/Text.h"

#include <algorithm>

namespace vfinspect {

using namespace VFoundation::TargaFormat;
using VFoundation::VImageIOTarga;

bool TargaInspector::IsTarga(ByteSource& source) {
    return source.Size() >= kHeaderSize + kFooterSize &&
           source.Text(source.Size() - kSignatureSize, kComparedSignatureSize) ==
               std::string_view(kSignature, kComparedSignatureSize);
}

std::uint64_t TargaInspector::Field(std::uint64_t offset, unsigned bytes, char const* label) {
    std::uint64_t const value = m_source.Number(offset, bytes, true);
    m_report.Add(offset, bytes, label, std::to_string(value));
    return value;
}

void TargaInspector::Inspect() {
    std::uint64_t const size = m_source.Size();
    if (size < VImageIOTarga::kMinFileSize) {
        m_report.AddProblem(size, "a Targa file has 44 bytes at least");
        return;
    }
    m_report.Open(0, "header");
    std::uint64_t const idLength = Field(kIDLength, 1, "ID length");
    std::uint64_t const mapType = Field(kColourMapType, 1, "colour map type");
    std::uint64_t const type = Field(kImageType, 1, "image type");
    Field(3, 2, "first colour");
    std::uint64_t const colours = Field(5, 2, "colours");
    std::uint64_t const colourDepth = Field(7, 1, "colour depth");
    Field(8, 2, "x origin");
    Field(10, 2, "y origin");
    std::uint64_t const width = Field(kWidth, 2, "width");
    std::uint64_t const height = Field(kHeight, 2, "height");
    std::uint64_t const depth = Field(kPixelDepth, 1, "pixel depth");
    Field(kDescriptor, 1, "descriptor");
    m_report.Close(kHeaderSize);

    bool const isKnownDepth = depth == 8 || depth == 24 || depth == 32;
    if (type != 2 && type != 3) {
        m_report.AddProblem(kImageType, "image type " + std::to_string(type) +
                                            " is read as plain pixels, which it does not hold");
    }
    if (!isKnownDepth) {
        m_report.AddProblem(kPixelDepth, "a pixel depth of " + std::to_string(depth) + "; it is 8, 24 or 32");
    }
    if (idLength > 127 || mapType != 0) {
        m_report.AddProblem(mapType != 0 ? kColourMapType : kIDLength,
                            mapType != 0 ? "pixels after a colour map are not found"
                                         : "an ID of more than 127 bytes is not read");
    }
    std::uint64_t const idEnd = std::min(kHeaderSize + idLength, size - kFooterSize);
    if (idLength > 0) {
        m_report.Add(kHeaderSize, idEnd - kHeaderSize, "ID",
                     Quoted(m_source.Text(kHeaderSize, idEnd - kHeaderSize)));
    }
    std::uint64_t const mapSize = mapType == 0 ? 0 : colours * ((colourDepth + 7) / 8);
    if (isKnownDepth) {
        AddPixels(idEnd + mapSize, width * height * (depth / 8));
    }
    std::uint64_t const footer = size - kFooterSize;
    m_report.Open(footer, "footer");
    Field(footer, 4, "extension area");
    Field(footer + 4, 4, "developer directory");
    std::string const signature = m_source.Text(size - kSignatureSize, kSignatureSize);
    m_report.Add(size - kSignatureSize, kSignatureSize, "signature", Quoted(signature));
    m_report.Close(size);
    auto const [found, expected] = std::mismatch(signature.begin(), signature.end(), kSignature);
    if (found != signature.end()) {
        m_report.AddProblem(size - kSignatureSize + static_cast<std::uint64_t>(found - signature.begin()),
                            "the signature of the footer is not \"TRUEVISION-XFILE.\" and a zero");
    }
}

void TargaInspector::AddPixels(std::uint64_t start, std::uint64_t needed) {
    std::uint64_t const footer = m_source.Size() - kFooterSize;
    std::uint64_t const end = start > footer ? start : std::min(start + needed, footer);
    if (start + needed > footer) {
        m_report.AddProblem(kWidth, "the pixels take " + Counted(needed, "byte") + ", " +
                                        std::to_string(footer > start ? footer - start : 0) + " are there");
    }
    if (start <= footer) {
        m_report.Add(start, end - start, "pixels",
                     Hexadecimal(m_source.Text(start, std::min<std::uint64_t>(17, end - start))));
    }
    if (end < footer) {
        m_report.Add(end, footer - end, "other areas");
    }
}

} // namespace vfinspect
