#include "foundation/core/internal/ClassOwned.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/SColour.h"
#include "foundation/strings/values/VColour.h"

#include <mutex>

namespace VFoundation {

VColour* VXMLFile::ms_tempXMLIOCol = nullptr;

namespace {

/// Every document of the process reads into the same colour object.
constinit std::mutex s_scratchLock;

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
        std::lock_guard const lock(s_scratchLock);
        if (VColour* const scratch = ms_tempXMLIOCol) {
            scratch->iSetRGBA(read.red, read.green, read.blue, read.alpha);
            if (name && ReadObject(name, *scratch)) {
                read = *scratch;
            }
        }
    }
    colour.iSetRGBA(read.red, read.green, read.blue, read.alpha);
    return true;
}

} // namespace VFoundation
