#include "foundation/VFoundation.h"

// What a plug-in may have: classes with a subclass among them, objects that a class keeps, a ring and typed arrays.

namespace {

using namespace VFoundation;

class APluginShape : public Registered<APluginShape, VObject> {
  public:
    static constexpr char const* kClassName = "APluginShape";
    static inline VClass* ms_theClass = nullptr;
    explicit APluginShape(VClass* cls = nullptr) : Registered(cls) {}
    static APluginShape* New() { return new APluginShape; }
    static void InitializeClass() { ms_spare = new VObjectRingBufferTmpl<APluginShape>(8); }
    static void UninitializeClass() {
        if (auto* const spare = ms_spare.exchange(nullptr)) {
            spare->Release();
        }
    }
    bool SerializeAsXML(VXMLFile& file) override { return file.SerializeAttribute("size", m_size); }

    static inline std::atomic<VObjectRingBufferTmpl<APluginShape>*> ms_spare{nullptr};

  private:
    long m_size = 0;
};

class APluginCircle : public Registered<APluginCircle, APluginShape> {
  public:
    static constexpr char const* kClassName = "APluginCircle";
    static inline VClass* ms_theClass = nullptr;
    APluginCircle() : Registered(nullptr) {}
    static APluginCircle* New() { return new APluginCircle; }
};

} // namespace

#define ENTRY extern "C" __attribute__((visibility("default")))

ENTRY void StartPlugin() {
    RegisterClasses<APluginCircle, APluginShape>();
    VClass::SetClassSubstitution("Shape", APluginShape::TheClass());
}

/// Leaves objects of the plug-in's types in the pools of the library and of a class.
ENTRY void WorkInPlugin() {
    auto const shapes = MakeObject<VObjectArrayTmpl<APluginShape>>();
    shapes->AddObjectTyped(MakeObject<APluginCircle>().Get());
    APluginShape::ms_spare.load()->Push(shapes->ObjectAtIndexTyped(0));
    auto const colours = MakeObject<VObjectArrayTmpl<VColour>>();
    auto const ring = MakeObject<VObjectRingBufferTmpl<VColour>>(2UL);
    try {
        throw VException(VException::eUnrecognized, nullptr, "from the plug-in", 7);
    } catch (VException const&) {
    }
}

ENTRY void EndPlugin(UnregisterResult* result) {
    *result = UnregisterClasses<APluginShape, APluginCircle, VObjectRingBufferTmpl<APluginShape>,
                                VObjectRingBufferTmpl<VColour>>();
}
