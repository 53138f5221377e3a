#include "foundation/VFoundation.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>

#include <string>

namespace {

using namespace VFoundation;

class PluginTest : public testing::Test {
  protected:
    void SetUp() override { InitializeLibrary(false); }
    void TearDown() override {
        UninitializeLibrary(true, false, true);
        EXPECT_FALSE(IsLoaded());
    }

    void Load() {
        m_plugin = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(m_plugin, nullptr) << dlerror();
        Call("StartPlugin");
    }
    UnregisterResult End() {
        UnregisterResult result;
        Call("EndPlugin", &result);
        return result;
    }
    void Unload() { EXPECT_EQ(dlclose(m_plugin), 0); }

    template <class... Arguments>
    void Call(char const* name, Arguments... arguments) {
        reinterpret_cast<void (*)(Arguments...)>(dlsym(m_plugin, name))(arguments...);
    }

    /// Whether any part of the plug-in is in this process.
    static bool IsLoaded() {
        return dl_iterate_phdr([](dl_phdr_info* info, std::size_t,
                                  void*) { return std::string(info->dlpi_name) == PLUGIN ? 1 : 0; },
                               nullptr) != 0;
    }

  private:
    void* m_plugin = nullptr;
};

std::string SavedTwice(char const* document) {
    auto const bytes = [](std::string const& text) {
        return reinterpret_cast<unsigned char const*>(text.c_str());
    };
    std::string text = document;
    for (int i = 0; i < 2; ++i) {
        VXMLFile in;
        EXPECT_TRUE(in.LoadFile("text", bytes(text), text.size(), "R"));
        auto const loaded = VObjectRef<VObject>::Adopt(in.ReadAndCreateObject(nullptr, nullptr));
        if (!loaded) {
            return "not loaded";
        }
        VString saved;
        VXMLFile out;
        EXPECT_TRUE(out.WriteFileToString(saved, "R"));
        EXPECT_TRUE(out.WriteObject(nullptr, *loaded));
        EXPECT_TRUE(out.CloseFile());
        text = saved.CString();
    }
    return text;
}

TEST_F(PluginTest, IsUsedUnregisteredUnloadedAndLoadedAgain) {
    for (int round = 0; round < 2; ++round) {
        Load();
        Call("WorkInPlugin");
        EXPECT_NE(SavedTwice("<R><APluginCircle size='7'/></R>").find("<APluginCircle size=\"7\""),
                  std::string::npos);
        EXPECT_NE(SavedTwice("<R><Shape size='8'/></R>").find("<APluginShape size=\"8\""), std::string::npos);
        EXPECT_TRUE(End());
        Unload();
        EXPECT_FALSE(IsLoaded());
        EXPECT_EQ(VClass::ClassForClassName("APluginCircle"), nullptr);
        EXPECT_EQ(VClass::GetClassSubstitution("Shape"), nullptr);
        EXPECT_EQ(SavedTwice("<R><APluginCircle size='7'/></R>"), "not loaded");
        for (int i = 0; i < 4; ++i) { // those of the plug-in are not among the recycled ones
            VObjectArray::NewObjectArray()->Release();
        }
        EXPECT_EQ(MakeObject<VObjectRingBufferTmpl<VColour>>(2UL)->UsedCount(), 0);
    }
}

TEST_F(PluginTest, StaysWhileItsObjectsLive) {
    Load();
    auto object = VObjectRef<VObject>::Adopt(VClass::ClassForClassName("APluginCircle")->NewInstance());
    UnregisterResult const refused = End();
    ASSERT_EQ(refused.cls, object->Class());
    EXPECT_EQ(refused.reason, UnregisterResult::eReason::eInstances);
    EXPECT_EQ(VClass::ClassForClassName("APluginCircle"), refused.cls);
    Call("WorkInPlugin");
    object = nullptr;
    EXPECT_TRUE(End());
    Unload();
}

TEST_F(PluginTest, MayOutliveALife) {
    Load();
    auto object = VObjectRef<VObject>::Adopt(VClass::ClassForClassName("APluginCircle")->NewInstance());
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(End().reason, UnregisterResult::eReason::eInstances);
    InitializeLibrary(false);
    object = nullptr;
    EXPECT_TRUE(End());
    Unload();
}

} // namespace
