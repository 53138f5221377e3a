#include "foundation/messaging/VEvent.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace VFoundation;

class ANamedEvent : public Registered<ANamedEvent, VEvent> {
  public:
    static constexpr char const* kClassName = "ANamedEvent";
    static inline VClass* ms_theClass = nullptr;

    explicit ANamedEvent(int eventID = 0) : Registered(nullptr, eventID) {}
    static ANamedEvent* New() { return new ANamedEvent(); }

    char const* EventIDToText(int eventID) const override { return eventID == 3 ? "saved" : nullptr; }
    int TextToEventID(char const* text) const override { return std::strcmp(text, "saved") == 0 ? 3 : -1; }
};

class VEventTest : public testing::Test {
  protected:
    VEventTest() { VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory); }
    ~VEventTest() override { VXMLFile::ClearIXMLFileIOFactory(); }

    static VString Written(VEvent const& event) {
        VString text;
        VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "R"));
        EXPECT_TRUE(file.WriteObject(nullptr, event));
        EXPECT_TRUE(file.CloseFile());
        return text;
    }
    static void Read(char const* text, VEvent& event) {
        VXMLFile file;
        ASSERT_TRUE(file.LoadFile("", reinterpret_cast<unsigned char const*>(text), std::strlen(text), "R"))
            << text;
        EXPECT_TRUE(file.ReadObject(nullptr, event));
    }
};

TEST_F(VEventTest, StandInXmlByName) {
    struct Case {
        VEvent* event;
        int id, readBack;
        char const* text;
    };
    VEvent plain;
    ANamedEvent named;
    for (Case const& c :
         {Case{&plain, 3, -1, "unknown"}, Case{&named, 3, 3, "saved"}, Case{&named, 4, -1, "unknown"}}) {
        c.event->SetEventID(c.id);
        c.event->SetTime(0.1 + 1e9);
        VString const text = Written(*c.event);
        EXPECT_NE(std::strstr(text.CString(), c.text), nullptr) << text.CString();
        c.event->SetTime(0);
        Read(text.CString(), *c.event);
        EXPECT_EQ(c.event->GetEventID(), c.readBack);
        EXPECT_EQ(c.event->Time(), 0.1 + 1e9);
    }
    named.SetEventID(3);
    Read("<R><ANamedEvent/></R>", named);
    EXPECT_EQ(named.EventID(), -1);
    EXPECT_EQ(named.Time(), 0.1 + 1e9) << "kept without an attribute";
}

} // namespace
