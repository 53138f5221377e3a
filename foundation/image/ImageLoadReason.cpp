#include "foundation/image/ImageLoadReason.h"

#include "foundation/strings/VString.h"

#include <exception>

namespace VFoundation {

namespace {

constinit thread_local ImageLoadReason* t_innermost = nullptr;

} // namespace

ImageLoadReason::ImageLoadReason() noexcept : m_outer(t_innermost) {
    t_innermost = this;
}

ImageLoadReason::~ImageLoadReason() {
    t_innermost = m_outer;
}

VString ImageLoadReason::ErrorDescription() const {
    return m_text;
}

void ImageLoadReason::Note(char const* path, char const* reason) noexcept {
    Tell("load", path, reason);
}

void ImageLoadReason::NoteSaving(char const* path, char const* reason) noexcept {
    Tell("save", path, reason);
}

void ImageLoadReason::Tell(char const* action, char const* path, char const* reason) noexcept {
    if (!t_innermost) {
        return;
    }
    try {
        t_innermost->m_text =
            std::string("cannot ") + action + " " + path + ": " + (*reason ? reason : "there is no memory");
    } catch (std::exception const&) {
        t_innermost->m_text.clear();
    }
}

} // namespace VFoundation
