#include "foundation/core/internal/ClassOwned.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/SColour.h"
#include "foundation/strings/values/VColour.h"

#include <atomic>
#include <optional>
#include <utility>

namespace VFoundation {

VColour* VXMLFile::ms_tempXMLIOCol = nullptr;

namespace {

constinit std::atomic_flag s_scratchInUse; // acquire and release: a lock that nobody waits for

/// The colour that a child element is read into: the shared one, or one of its own while another document has that.
class ScratchColour {
  public:
    explicit ScratchColour(VColour* shared) {
        if (shared && !s_scratchInUse.test_and_set(std::memory_order_acquire)) {
            m_shared = shared;
        } else {
            m_own.emplace();
        }
    }
    ScratchColour(ScratchColour const&) = delete;
    ScratchColour& operator=(ScratchColour const&) = delete;
    ~ScratchColour() {
        if (m_shared) {
            s_scratchInUse.clear(std::memory_order_release);
        }
    }
    VColour& Get() noexcept { return m_shared ? *m_shared : *m_own; }

  private:
    VColour* m_shared = nullptr;
    std::optional<VColour> m_own;
};

} // namespace

void VXMLFile::InitializeClass() {
    if (!ms_tempXMLIOCol) {
        ms_tempXMLIOCol = new VColour;
    }
}

void VXMLFile::UninitializeClass() {
    detail::ReleaseAndClear(ms_tempXMLIOCol);
}

bool VXMLFile::SerializeColourAttribute(char const* name, SColour& colour, SColour const& defaultColour) {
    if (IsSaving()) {
        if (!colour.IsSameColour(defaultColour)) {
            WriteAttribute(name, SColour::GetColourAsString(colour, 1));
        }
        return false;
    }
    if (VString text; ReadAttribute(name, text)) {
        colour.SetColourFromString(text);
        return true;
    }
    SColour read = defaultColour;
    {
        ScratchColour scratch(ms_tempXMLIOCol);
        scratch.Get().iSetRGBA(read.red, read.green, read.blue, read.alpha);
        if (name && ReadObject(name, scratch.Get())) {
            read = scratch.Get();
        }
    }
    colour.iSetRGBA(read.red, read.green, read.blue, read.alpha);
    return true;
}

} // namespace VFoundation
