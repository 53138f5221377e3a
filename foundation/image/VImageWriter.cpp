#include "foundation/image/VImageWriter.h"

#include "foundation/image/VImage.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/PngEncoder.h"
#include "foundation/image/internal/WithinMemory.h"
#include "foundation/persistence/internal/FileReplacer.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

namespace VFoundation {

namespace {

/// What failed last, as the system says it.
void FailBySystem(DecodeReport& report) {
    report.Fail("%s", std::system_category().message(errno ? errno : EIO).c_str());
}

class StreamSink final : public ByteSink {
  public:
    explicit StreamSink(std::FILE* stream) : m_stream(stream) {}
    bool Write(void const* bytes, std::size_t count) override {
        return std::fwrite(bytes, 1, count, m_stream) == count;
    }

  private:
    std::FILE* m_stream;
};

class DataSink final : public ByteSink {
  public:
    explicit DataSink(VData& data) : m_data(data) {}
    bool Write(void const* bytes, std::size_t count) override {
        unsigned long const length = m_data.Length();
        bool const hasRoom = DoWithinMemory([&] { m_data.SetLength(length + count, true); });
        if (hasRoom && count > 0) {
            std::memcpy(m_data.Bytes() + length, bytes, count);
        }
        errno = hasRoom ? errno : ENOMEM;
        return hasRoom;
    }

  private:
    VData& m_data;
};

} // namespace

VImageWriter::VImageWriter(int compression) noexcept : m_compression(std::clamp(compression, 0, 9)) {
}

/// `work` is false when it fails, with the reason in its report or in `errno`.
template <class Work>
bool VImageWriter::Do(VBitmapImage const* bitmap, std::string const& name, Work work) {
    m_error.clear();
    DecodeReport report;
    bool isDone = false;
    errno = 0;
    if (!bitmap) {
        report.Fail("it has no pixels");
    } else if (!DoWithinMemory([&] { isDone = work(*bitmap, report); })) {
        report.Fail("there is no memory");
    }
    if (!isDone) {
        DoWithinMemory([&] {
            FailBySystem(report);
            m_error = "cannot write " + name + ": " + report.reason;
        });
    }
    return isDone;
}

bool VImageWriter::Write(VBitmapImage const* bitmap, std::string const& path) {
    return Do(bitmap, path, [this, &path](VBitmapImage const& pixels, DecodeReport& report) {
        FileReplacer file(path.c_str());
        if (!file.Stream()) {
            return false;
        }
        StreamSink sink(file.Stream());
        if (!VFoundation::EncodePng(pixels, m_compression, sink, report)) {
            return false;
        }
        return file.Commit();
    });
}

VObjectRef<VData> VImageWriter::Encode(VBitmapImage const* bitmap) {
    VObjectRef<VData> data;
    bool const isDone =
        Do(bitmap, "a picture to memory", [&](VBitmapImage const& pixels, DecodeReport& report) {
            DataSink sink(*data.Allocate());
            return VFoundation::EncodePng(pixels, m_compression, sink, report);
        });
    return isDone ? data : VObjectRef<VData>();
}

bool VImageWriter::WritePng(VImage const& image, std::string const& path) {
    return Write(image.ImageRef(), path);
}

bool VImageWriter::WritePng(VBitmapImage const& bitmap, std::string const& path) {
    return Write(&bitmap, path);
}

VObjectRef<VData> VImageWriter::EncodePng(VImage const& image) {
    return Encode(image.ImageRef());
}

VObjectRef<VData> VImageWriter::EncodePng(VBitmapImage const& bitmap) {
    return Encode(&bitmap);
}

VString VImageWriter::ErrorDescription() const {
    return VString(m_error.c_str());
}

} // namespace VFoundation
