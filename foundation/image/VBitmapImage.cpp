#include "foundation/image/VBitmapImage.h"

#include "foundation/image/internal/WithinMemory.h"

namespace VFoundation {

VClass* VBitmapImage::ms_theClass = nullptr;

VBitmapImage* VBitmapImage::Create(std::uint32_t width, std::uint32_t height, unsigned long bytesPerRow,
                                   void* info, void const* data, unsigned long size,
                                   ReleaseCallback release) {
    static_assert(sizeof(unsigned long) == 8, "sizes of rows and bitmaps would not fit");
    bool const isAligned = reinterpret_cast<unsigned long>(data) % alignof(std::uint32_t) == 0;
    if (width == 0 || height == 0 || !data || !isAligned || bytesPerRow % kBytesPerPixel != 0 ||
        bytesPerRow < kBytesPerPixel * width || bytesPerRow > size / height) {
        return nullptr;
    }
    VBitmapImage* bitmap = nullptr;
    if (!DoWithinMemory([&bitmap] { bitmap = new VBitmapImage; })) {
        return nullptr;
    }
    bitmap->m_width = width;
    bitmap->m_height = height;
    bitmap->m_bytesPerRow = bytesPerRow;
    bitmap->m_data = static_cast<unsigned char const*>(data);
    bitmap->m_size = size;
    bitmap->m_info = info;
    bitmap->m_release = release;
    return bitmap;
}

VBitmapImage::~VBitmapImage() {
    if (m_release) {
        m_release(m_info, m_data, m_size);
    }
}

} // namespace VFoundation
