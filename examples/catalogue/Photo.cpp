#include "examples/catalogue/Photo.h"

namespace catalogue {

/// Of 9 x 8 squares: a bit for each that is darker than the one to its right.
static unsigned long long FingerprintOf(VBitmapImage const& squares) {
    auto const lightAt = [&](std::uint32_t x, std::uint32_t y) {
        std::uint32_t const pixel = squares.Row(y)[x];
        return (pixel >> 16 & 0xFF) + 2 * (pixel >> 8 & 0xFF) + (pixel & 0xFF);
    };
    unsigned long long print = 0;
    for (std::uint32_t i = 0; i < 64; ++i) {
        print = print << 1 | (lightAt(i % 8, i / 8) < lightAt(i % 8 + 1, i / 8) ? 1 : 0);
    }
    return print;
}

bool Photo::SerializeAsXML(VXMLFile& file) {
    file.SerializeAttribute("path", path, VString());
    file.SerializeAttribute("id", id);
    file.SerializeAttribute("size", size);
    file.SerializeAttribute("modified", modified);
    file.SerializeAttribute("width", width);
    file.SerializeAttribute("height", height);
    id = id < 1'000'000'000 ? id : 0; // so that there are always more
    return !path.IsEmpty() && id > 0;
}

VString Photo::Make() {
    VImageReader reader;
    auto const image = reader.ReadFile(path.StdString());
    auto const picture = image ? image->ImageRef()->Upright(reader.Orientation()) : nullptr;
    if (!picture) {
        return image ? "no memory to turn " + path.StdString() : reader.ErrorDescription();
    }
    width = static_cast<int>(picture->Width());
    height = static_cast<int>(picture->Height());
    auto const small = picture->ScaledToFit(kThumbnailSide);
    auto const squares = small ? small->Scaled(9, 8) : nullptr;
    if (!squares) {
        return "no memory for the thumbnail of " + path.StdString();
    }
    VImageWriter writer;
    thumbnail = writer.EncodePng(*small);
    fingerprint = FingerprintOf(*squares);
    return writer.ErrorDescription();
}

} // namespace catalogue
