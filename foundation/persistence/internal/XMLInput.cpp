#include "foundation/persistence/internal/XMLInput.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/host/VFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace VFoundation {

namespace {

constexpr char kCarriageReturn = '\r';

void NormalizeLineEnds(std::string& text) {
    std::size_t kept = text.find(kCarriageReturn);
    for (std::size_t i = kept; i < text.size(); ++i) {
        char const c = text[i];
        if (c == kCarriageReturn && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        text[kept++] = c == kCarriageReturn ? '\n' : c;
    }
    text.resize(std::min(kept, text.size()));
}

} // namespace

std::string XMLFileText(char const* path, IXMLFileIO::Failure& failure) {
    struct Close {
        void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
    };
    errno = 0;
    std::unique_ptr<std::FILE, Close> const file(VFile::OpenRegularFile(path));
    if (!file || std::fseek(file.get(), 0, SEEK_END) != 0) {
        failure.systemError = path ? errno : ENOENT;
        return {};
    }
    long const length = std::ftell(file.get());
    std::rewind(file.get());
    if (length < 0 || narrow_cast<unsigned long>(length) > IXMLFileIO::kMaxTextSize) {
        failure.reason = "longer than a document may be";
        return {};
    }
    std::string text(narrow_cast<std::size_t>(length), '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) != 0) {
        failure.systemError = errno ? errno : EIO;
        return {};
    }
    NormalizeLineEnds(text);
    return text;
}

} // namespace VFoundation
