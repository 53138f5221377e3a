#include "foundation/containers/VPtrArray.h"
#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/strings/VColour.h"
#include "tests/persistence/XMLTestSupport.h"
#include "tests/support/Counted.h"

#include <thread>
#include <vector>

namespace {

using namespace testing_support;

/// A class as users write them, with a version of its own.
class APlace : public Registered<APlace, VObject> {
  public:
    static constexpr char const* kClassName = "APlace";
    static inline VClass* ms_theClass = nullptr;
    explicit APlace(VClass* cls = nullptr, long x = 0) : Registered(cls), m_x(x) {}
    static APlace* New() { return new APlace; }
    bool SerializeAsXML(VXMLFile& file) override {
        VObject::SerializeAsXML(file);
        return file.SerializeAttribute("x", m_x);
    }
    long m_x;
};

class ADerivedPlace : public Registered<ADerivedPlace, APlace> {
  public:
    static constexpr char const* kClassName = "ADerivedPlace";
    static inline VClass* ms_theClass = nullptr;
    explicit ADerivedPlace(VClass* cls = nullptr) : Registered(cls) {}
    static ADerivedPlace* New() { return new ADerivedPlace; }
};

class AnAbstract : public Registered<AnAbstract, VObject> {
  public:
    static constexpr char const* kClassName = "AnAbstract";
    static inline VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
};

class ObjectXML : public XML {
  protected:
    ObjectXML() {
        APlace::TheClass()->SetVersion(1);
        ADerivedPlace::TheClass();
        AnAbstract::TheClass();
        ACounted::TheClass();
    }
};

std::string Described(VObject const& object) {
    VString text;
    object.GetDescription(text);
    return text.CString();
}

VObjectRef<VObjectArray> NewArray() {
    return VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
}

TEST_F(ObjectXML, HasTheDescribedForm) {
    APlace place(nullptr, 10);
    VString const hello("hello");
    VString const sentence("more than ten characters");
    auto const items = NewArray();
    items->AddObject(&place);
    items->AddObject(nullptr);
    items->AddObject(&hello);
    items->AddObject(&sentence);
    APlace::TheClass()->SetVersion(3);
    std::string const text = Saved([&](VXMLFile& file) {
        EXPECT_TRUE(file.WriteObject("items", items.Get()) && file.SerializeObject("", place));
        EXPECT_FALSE(file.WriteObject("null", nullptr));
        EXPECT_EQ(file.ReadAndCreateObject(nullptr, nullptr), nullptr);
        EXPECT_STREQ(file.GetErrorStr(), "Bad mode");
    });
    EXPECT_EQ(text, "<R><VObjectArray name=\"items\" count=\"4\"><APlace version=\"3\" x=\"10\" />"
                    "<VString string=\"hello\" /><VString>more than ten characters</VString></VObjectArray>"
                    "<APlace version=\"3\" x=\"10\" /></R>");
    VXMLFile file;
    ASSERT_TRUE(Load(file, text));
    auto const read = NewArray();
    EXPECT_FALSE(file.WriteObject(nullptr, read.Get())) << "the document is loading";
    EXPECT_TRUE(file.ReadObject("ITEMS", read.Get()));
    ASSERT_EQ(read->Count(), 3) << "nulls are lost";
    EXPECT_EQ(static_cast<APlace*>(read->ObjectAtIndex(0))->m_x, 10);
    EXPECT_TRUE(read->ObjectAtIndex(1)->IsEqual(hello) && read->ObjectAtIndex(2)->IsEqual(sentence));
    APlace last;
    EXPECT_TRUE(file.SerializeObject("", last) && last.m_x == 10);
    EXPECT_EQ(Log(), "");
}

TEST_F(ObjectXML, IsFoundByClassAndName) {
    VXMLFile file;
    ASSERT_TRUE(Load(file, "<R><Unknown name='a'/><APlace name='a' x='1'/><APlace x='2' name='B'/>"
                           "<Old name='c' x='3'/><any class='APlace' name='d' x='4'/>"
                           "<APlace class='Unknown' name='e' x='5'/><VObject name='f' x='6'/></R>"));
    auto const read = [&](char const* name) {
        APlace place;
        return file.ReadObject(name, place) ? place.m_x : -1;
    };
    EXPECT_EQ(read(nullptr), 1);
    EXPECT_EQ(read("b"), 2);
    EXPECT_EQ(read("c"), -1);
    EXPECT_FALSE(file.CanReadObject("c", APlace::TheClass()));
    VClass::SetClassSubstitution("Old", APlace::TheClass());
    EXPECT_EQ(read("c"), 3);
    EXPECT_TRUE(file.CanReadObject("c", APlace::TheClass()));
    auto const created = VObjectRef<VObject>::Adopt(file.ReadAndCreateObject("c", nullptr));
    EXPECT_TRUE(created && created->IsMemberOfClass(APlace::TheClass()));
    VClass::SetClassSubstitution("Old", nullptr);
    EXPECT_EQ(read("d"), 4) << "whatever the element is called";
    EXPECT_EQ(read("e"), -1);
    EXPECT_EQ(read("f"), 6) << "VObject is a base of it";
    EXPECT_TRUE(file.CanReadObject(nullptr, APlace::TheClass()));
    EXPECT_FALSE(file.CanReadObject("f", APlace::TheClass()) || file.CanReadObject(nullptr, nullptr));
    EXPECT_FALSE(file.ReadObject(nullptr, nullptr));
    EXPECT_STREQ(file.GetNodeName(), "R") << "the cursor is where it was";

    // The class that sorts last cannot be looked up, but the object at hand knows its name.
    VXMLFile last;
    ASSERT_TRUE(Load(last, "<R><VXMLFile/></R>"));
    EXPECT_TRUE(last.ReadObject(nullptr, file));
}

TEST_F(ObjectXML, IsCreatedFromRegisteredClasses) {
    VXMLFile file;
    ASSERT_TRUE(Load(file, "<R><Unknown/><APlace x='1'/><ADerivedPlace x='2'/><AnAbstract name='a'/></R>"));
    auto const create = [&](char const* name, VClass* base) {
        auto const object = VObjectRef<VObject>::Adopt(file.ReadAndCreateObject(name, base));
        return object ? std::to_string(static_cast<APlace*>(object.Get())->m_x) + object->ClassName()
                      : "null";
    };
    EXPECT_EQ(create(nullptr, nullptr), "1APlace");
    EXPECT_EQ(create(nullptr, ADerivedPlace::TheClass()), "2ADerivedPlace");
    EXPECT_EQ(create("a", nullptr), "null");
    EXPECT_EQ(create(nullptr, VString::TheClass()), "null");
    EXPECT_STREQ(file.GetNodeName(), "R");
}

TEST_F(ObjectXML, ArraysSkipWhatTheyDoNotKnow) {
    VXMLFile file;
    auto const array = NewArray();
    array->AddObject(array.Get());
    ASSERT_TRUE(Load(file, "<R><VObjectArray><VString string='a'/>text<Unknown/><AnAbstract/>"
                           "<X class='VString' string='b'/></VObjectArray></R>"));
    EXPECT_TRUE(file.ReadObject(nullptr, array.Get()));
    EXPECT_EQ(array->Count(), 2);
    EXPECT_EQ(Log(), "VObjectArray::SerializeAsXML - Attribute 'count' not found\n"
                     "VObjectArray::SerializeAsXML - No class for className 'Unknown'\n"
                     "VObjectArray::SerializeAsXML - Error allocating new object of class: AnAbstract\n");
    for (char const* const count : {"-1", "0", "2147483648", "x"}) {
        ASSERT_TRUE(
            Load(file, std::string("<R><VObjectArray count='") + count + "'><ACounted/></VObjectArray></R>"));
        EXPECT_TRUE(file.ReadObject(nullptr, array.Get()));
        EXPECT_EQ(array->Count(), 1) << count;
    }
    EXPECT_EQ(ACounted::ms_alive, 1);
    array->RemoveAllObjects();
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST_F(ObjectXML, AContainerInsideItselfIsRefused) {
    auto const array = NewArray();
    array->AddObject(array.Get());
    array->AddObject(array.Get());
    EXPECT_EQ(Saved([&](VXMLFile& file) { file.WriteObject(nullptr, array.Get()); }), "(refused)");
    array->RemoveAllObjects();
    auto const deep = NewArray();
    VObjectRef<VObjectArray> innermost = deep;
    for (int level = 2; level < IXMLFileIO::kMaxNesting; ++level) {
        auto const next = NewArray();
        innermost->AddObject(next.Get());
        innermost = next;
    }
    VXMLFile file;
    auto const read = NewArray();
    EXPECT_TRUE(Load(file, Saved([&](VXMLFile& saving) { saving.WriteObject(nullptr, deep.Get()); })));
    EXPECT_TRUE(file.ReadObject(nullptr, read.Get()) && read->Count() == 1);
}

/// A colour, an image, a thread: a document may name any class there is.
TEST_F(ObjectXML, AnyRegisteredClassMayBeNamed) {
    auto const classes = VObjectRef<VPtrArray>::Adopt(VObject::TheClass()->SubClassesArray());
    std::string elements;
    for (long i = 0; i < classes->Count(); ++i) {
        std::string const name = static_cast<VClass*>(classes->PtrAtIndex(i))->Name();
        elements += name.find('<') == std::string::npos ? "<" + name + " x='1'>text</" + name + ">" : "";
    }
    VXMLFile file;
    auto const array = NewArray();
    ASSERT_TRUE(Load(file, "<R><VObjectArray count='1'>" + elements + "</VObjectArray></R>"));
    EXPECT_TRUE(file.ReadObject(nullptr, array.Get()));
    EXPECT_GE(array->Count(), 6);
}

TEST_F(ObjectXML, DocumentsOfSeveralThreadsDoNotMeet) {
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([this, number] {
            std::string const path = Path(std::to_string(number).c_str());
            for (int i = 0; i < 50; ++i) {
                APlace place(nullptr, number * 1000 + i);
                VXMLFile file;
                EXPECT_TRUE(file.OpenFileForWrite(path.c_str(), "R"));
                EXPECT_TRUE(file.WriteObject("place", place) &&
                            file.WriteObject("colour", VColour(number, i, 0, 0, nullptr)));
                EXPECT_TRUE(file.CloseFile() && file.OpenFileForRead(path.c_str(), "R"));
                APlace read;
                SColour colour;
                EXPECT_TRUE(file.ReadObject("place", read) && read.m_x == place.m_x);
                EXPECT_TRUE(file.SerializeColourAttribute("colour", colour, colour));
                EXPECT_EQ(colour.red * 1000 + colour.green, place.m_x);
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

TEST_F(ObjectXML, OlderDictionariesAreRead) {
    VXMLFile file;
    VDictionary prefs;
    ASSERT_TRUE(file.OpenFileForRead(PERSISTENCE_TEST_DATA "/older-dictionary.xml", "Settings"));
    ASSERT_TRUE(file.ReadObject("prefs", prefs));
    EXPECT_EQ(Log(), "");
    ASSERT_EQ(prefs.Count(), 3);
    auto const value = [&](char const* key) {
        VString const string(key);
        return prefs.ObjectForKey(&string);
    };
    EXPECT_TRUE(value("colour")->IsEqual(VString("d\xC3\xA9j\xC3\xA0 vu")));
    EXPECT_TRUE(value("a key of more than ten characters")->IsEqual(VString("           ")));
    auto const* const list = static_cast<VObjectArray*>(value("list"));
    ASSERT_TRUE(list && list->Count() == 2) << "whatever its count says";
    EXPECT_TRUE(list->ObjectAtIndex(0)->IsEqual(VString("<&>")));
    EXPECT_TRUE(list->ObjectAtIndex(1)->IsEqual(VString("\r\n blanks & lines ")));

    VDictionary again;
    RoundTrip([&](VXMLFile& saving) { saving.WriteObject(nullptr, prefs); },
              [&](VXMLFile& loading) { EXPECT_TRUE(loading.ReadObject(nullptr, again)); });
    EXPECT_EQ(Described(again), Described(prefs));
}

TEST_F(ObjectXML, DamagedDocumentsLeaveUsableObjects) {
    std::string const older = Contents(PERSISTENCE_TEST_DATA "/older-dictionary.xml");
    VDictionary prefs;
    VXMLFile whole;
    ASSERT_TRUE(Load(whole, older, "Settings") && whole.ReadObject("prefs", prefs));
    VString compact;
    ASSERT_TRUE(whole.WriteFileToString(compact, "Settings") && whole.WriteObject("prefs", prefs));
    ASSERT_TRUE(whole.CloseFile());
    int loaded = 0;
    for (std::string const& document : {older, std::string(compact.CString())}) {
        auto const tryOut = [&loaded](std::string const& damaged) {
            VXMLFile file;
            VDictionary read;
            if (Load(file, damaged, "Settings") && file.ReadObject("prefs", read)) {
                ++loaded;
                EXPECT_EQ(read.Keys()->Count(), read.Values()->Count());
                EXPECT_NE(Saved([&](VXMLFile& saving) { saving.WriteObject(nullptr, read); }), "(refused)");
            }
        };
        for (std::size_t i = 0; i < document.size(); ++i) {
            tryOut(document.substr(0, i));
            for (char const byte : {'\x00', '\x7F', '\x80', '\xFF'}) {
                std::string damaged = document;
                damaged[i] = byte;
                tryOut(damaged);
            }
        }
    }
    EXPECT_GT(loaded, 100) << "damage inside a text is not noticed";
}

} // namespace
