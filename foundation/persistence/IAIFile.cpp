#include "foundation/persistence/IAIFile.h"

#include "foundation/core/VObject.h"
#include "foundation/strings/VString.h"

#include <exception>

namespace VFoundation {

VString IAIFile::ErrorDescription() const {
    return {};
}

void IAIFile::NoteChunk(LoadReport::eLoss loss, unsigned long id) noexcept {
    char text[5] = {};
    for (int i = 0; i < 4; ++i) {
        auto const byte = static_cast<unsigned char>(id >> (24 - 8 * i));
        text[i] = byte >= ' ' && byte < 0x7F ? static_cast<char>(byte) : '?';
    }
    NoteLoss(loss, text);
}

void IAIFile::NoteCount(long expected, long found) noexcept {
    if (expected == found) {
        return;
    }
    try {
        NoteLoss(LoadReport::kCountDiffers, LoadReport::Counts(expected, found).c_str());
    } catch (std::exception const&) {
        NoteLoss(LoadReport::kCountDiffers, nullptr);
    }
}

IAIFile& IAIFile::operator<<(VObject& object) {
    object.Serialize(*this);
    return *this;
}

IAIFile& IAIFile::operator>>(VObject& object) {
    if (!object.Serialize(*this)) {
        NoteLoss(LoadReport::kNotRead, object.ClassName());
    }
    return *this;
}

} // namespace VFoundation
