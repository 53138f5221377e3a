#pragma once

namespace VFoundation {

class VClass;
class VObject;

/// What the root class tells `LeakReport`. Internal to the kernel.
struct LeakNotes {
#ifdef NDEBUG
    static constexpr bool kAreTaken = false;
#else
    static constexpr bool kAreTaken = true;
#endif

    static void NoteBorn(VObject const* object, VClass const* cls) noexcept;
    static void NoteGone(VObject const* object, VClass const* cls) noexcept;
};

} // namespace VFoundation
