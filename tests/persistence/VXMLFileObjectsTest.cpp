#include "foundation/containers/VPtrArray.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/strings/values/VColour.h"
#include "tests/persistence/XMLTestSupport.h"
#include "tests/support/Counted.h"

#include <thread>
#include <vector>

namespace {

using namespace testing_support;

/// A class as users write them.
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

class AnAbstract : public Registered<AnAbstract, APlace> {
  public:
    static constexpr char const* kClassName = "AnAbstract";
    static inline VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
};

class XMLFileObjects : public XMLBackEndTest {
  protected:
    XMLFileObjects() {
        AnAbstract::TheClass();
        APlace::TheClass()->SetVersion(1);
        ACounted::TheClass();
    }
};

VObjectRef<VObjectArray> NewArray() {
    return VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
}

ON_EACH_BACK_END(XMLFileObjects);

TEST_P(XMLFileObjects, HasAFixedForm) {
    APlace place(nullptr, 10);
    VString const hello("hello");
    VString const sentence("more than ten characters");
    auto const items = NewArray();
    VObject const* const all[] = {&hello, nullptr, &place, &sentence};
    for (VObject const* const item : all) {
        items->AddObject(item);
    }
    std::string const text = Saved([&](VXMLFile& file) {
        EXPECT_TRUE(file.WriteObject("items", items.Get()));
        APlace::TheClass()->SetVersion(3);
        EXPECT_TRUE(file.SerializeObject("", place));
        EXPECT_FALSE(file.WriteObject("null", nullptr));
        EXPECT_FALSE(file.ReadAndCreateObject(nullptr, nullptr));
        EXPECT_FALSE(file.ReadObject(nullptr, place));
        EXPECT_STREQ(file.GetErrorStr(), "Bad mode");
    });
    EXPECT_EQ(
        text,
        "<R><VObjectArray name=\"items\" count=\"4\"><VString string=\"hello\" /><APlace x=\"10\" />"
        "<VString>more than ten characters</VString></VObjectArray><APlace version=\"3\" x=\"10\" /></R>");
    Document file(text);
    auto const read = NewArray();
    EXPECT_FALSE(file.WriteObject(nullptr, read.Get())) << "the document is loading";
    EXPECT_TRUE(file.ReadObject("ITEMS", read.Get()));
    EXPECT_EQ(read->Count(), 3) << "nulls are lost";
    EXPECT_TRUE(read->ObjectAtIndex(0)->IsEqual(hello));
    EXPECT_TRUE(read->ObjectAtIndex(2)->IsEqual(sentence));
    EXPECT_EQ(static_cast<APlace*>(read->ObjectAtIndex(1))->m_x, 10);
    EXPECT_EQ(Log(), "");
}

TEST_P(XMLFileObjects, IsFoundByClassAndName) {
    Document file(
        "<R><Unknown name='a'/><APlace name='a' x='1'/><APlace x='2' name='B'/><Old name='c' x='3'/>"
        "<any class='APlace' name='d' x='4'/><APlace class='Unknown' name='e' x='5'/>"
        "<VObject name='f' x='6'/><AnAbstract name='g'/></R>");
    auto const xOf = [](VObject* object) { return object ? static_cast<APlace*>(object)->m_x : -1; };
    auto const found = [&](char const* name, VClass* base = nullptr) {
        APlace place;
        long const read = file.ReadObject(name, place) ? place.m_x : -1;
        auto const created = VObjectRef<VObject>::Adopt(file.ReadAndCreateObject(name, base));
        return std::to_string(read) + " " + std::to_string(xOf(created.Get())) +
               (file.CanReadObject(name, APlace::TheClass()) ? " can" : "");
    };
    EXPECT_EQ(found(nullptr), "1 1 can");
    EXPECT_EQ(found("b"), "2 2 can");
    EXPECT_EQ(found("c"), "-1 -1");
    VClass::SetClassSubstitution("Old", APlace::TheClass());
    EXPECT_EQ(found("c"), "3 3 can");
    VClass::SetClassSubstitution("Old", nullptr);
    EXPECT_EQ(found("d", APlace::TheClass()), "4 4 can") << "whatever the element is called";
    EXPECT_EQ(found("e"), "-1 -1");
    EXPECT_EQ(found("f", APlace::TheClass()), "6 -1") << "VObject is a base of it";
    EXPECT_EQ(found("g").substr(0, 5), "-1 -1");
    EXPECT_EQ(found("a", VString::TheClass()), "1 -1 can");
    EXPECT_FALSE(file.CanReadObject(nullptr, nullptr));
    EXPECT_FALSE(file.ReadObject(nullptr, nullptr));
    EXPECT_STREQ(file.GetNodeName(), "R") << "the cursor is where it was";
    // The class that sorts last cannot be looked up, but the object at hand knows its name.
    EXPECT_TRUE(Document("<R><VXMLFile/></R>").ReadObject(nullptr, file));
}

TEST_P(XMLFileObjects, ArraysSkipWhatTheyDoNotKnow) {
    Document file("<R><VObjectArray><VString string='a'/>text<Unknown/><AnAbstract/>"
                  "<X class='VString' string='b'/></VObjectArray></R>");
    auto const array = NewArray();
    EXPECT_TRUE(file.ReadObject(nullptr, array.Get()));
    EXPECT_EQ(array->Count(), 2);
    EXPECT_EQ(Log(), "VObjectArray::SerializeAsXML - Attribute 'count' not found\n"
                     "VObjectArray::SerializeAsXML - No class for className 'Unknown'\n"
                     "VObjectArray::SerializeAsXML - Error allocating new object of class: AnAbstract\n");
    for (std::string const count : {"-1", "0", "2147483648", "x"}) {
        Document lying("<R><VObjectArray count='" + count + "'><ACounted/></VObjectArray></R>");
        EXPECT_TRUE(lying.ReadObject(nullptr, array.Get()));
        EXPECT_EQ(array->Count(), 1) << count;
    }
    array->RemoveAllObjects();
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST_P(XMLFileObjects, ReportsWhatLoadingPassedOver) {
    Document file(
        "<?xml version='1.0'?>\n<R><VObjectArray count='9'><Unknown/>\n\n  "
        "<AnAbstract/><!--\n--><APlace/><Unknown/>"
        "<VDictionary version='2' count='0'><VDictionaryPair/></VDictionary>"
        "<VDictionary version='2' count='2'><VDictionaryPair><VString string='k'/></VDictionaryPair>"
        "<VString/></VDictionary></VObjectArray></R>");
    auto const array = NewArray();
    EXPECT_TRUE(file.Report().IsEmpty());
    EXPECT_TRUE(file.ReadObject(nullptr, array.Get())) << "the result does not tell";
    EXPECT_EQ(file.Report().AsText(),
              "R/VObjectArray/Unknown at line 2, column 28: unknown class (Unknown)\n"
              "R/VObjectArray/AnAbstract at line 4, column 3: not made (AnAbstract)\n"
              "R/VObjectArray/APlace at line 5, column 4: not read (APlace)\n"
              "R/VObjectArray/Unknown[2] at line 5, column 13: unknown class (Unknown)\n"
              "R/VObjectArray/VDictionary at line 5, column 23: count differs (none, found some)\n"
              "R/VObjectArray/VDictionary[2]/VDictionaryPair at line 5, column 125: not made (value)\n"
              "R/VObjectArray/VDictionary[2]/VString at line 5, column 181: wrong kind (VString)\n"
              "R/VObjectArray/VDictionary[2] at line 5, column 90: count differs (2, found 0)\n"
              "R/VObjectArray at line 2, column 4: count differs (9, found 3)\n");
    std::string many;
    for (std::size_t i = 0; i < 2 * LoadReport::kMostEntries; ++i) {
        many += "<Unknown/>";
    }
    EXPECT_TRUE(Load(file, "<R><VObjectArray>" + many + "</VObjectArray></R>"));
    EXPECT_TRUE(file.ReadObject(nullptr, array.Get()));
    EXPECT_EQ(file.Report().Count(), 2 * LoadReport::kMostEntries) << "of this document";
    EXPECT_EQ(file.Report().Entries().size(), LoadReport::kMostEntries);
}

TEST_P(XMLFileObjects, NestsAsDeepAsDocumentsMay) {
    auto const array = NewArray();
    array->AddObject(array.Get());
    array->AddObject(array.Get());
    EXPECT_EQ(Saved([&](VXMLFile& file) { file.WriteObject(nullptr, array.Get()); }), "(refused)");
    array->RemoveAllObjects();
    VObjectArray* innermost = array.Get();
    for (int level = 2; level < IXMLFileIO::kMaxNesting; ++level) {
        auto const next = NewArray();
        innermost->AddObject(next.Get());
        innermost = next.Get();
    }
    Document file(Saved([&](VXMLFile& saving) { saving.WriteObject(nullptr, array.Get()); }));
    EXPECT_TRUE(file.ReadObject(nullptr, array.Get()));
    EXPECT_EQ(array->Count(), 1);
}

TEST_P(XMLFileObjects, MayNameAnyRegisteredClass) {
    InitializeLibrary(false);
    auto const classes = VObjectRef<VPtrArray>::Adopt(VObject::TheClass()->SubClassesArray());
    std::string elements;
    for (long i = 0; i < classes->Count(); ++i) {
        std::string const name = static_cast<VClass*>(classes->PtrAtIndex(i))->Name();
        elements += name.find('<') == std::string::npos ? "<" + name + " x='1'>text</" + name + ">" : "";
    }
    Document file("<R><VObjectArray count='1'>" + elements + "</VObjectArray></R>");
    auto const array = NewArray();
    EXPECT_TRUE(file.ReadObject(nullptr, array.Get()));
    EXPECT_GT(array->Count(), 30);
}

TEST_P(XMLFileObjects, DocumentsOfSeveralThreadsDoNotMeet) {
    std::vector<std::thread> threads;
    for (int red = 0; red < 4; ++red) {
        threads.emplace_back([red] {
            for (int green = 0; green < 50; ++green) {
                VColour const written(red, green, 0, 0, nullptr);
                Document file(Saved([&](VXMLFile& saving) { saving.WriteObject("c", written); }));
                SColour read;
                EXPECT_TRUE(file.SerializeColourAttribute("c", read, read));
                EXPECT_TRUE(read.IsSameColour(written));
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

TEST_P(XMLFileObjects, OfOlderFilesAreRead) {
    Document file(BytesOf(PERSISTENCE_TEST_DATA "/older-dictionary.xml"), "Settings");
    VDictionary prefs;
    ASSERT_TRUE(file.ReadObject("prefs", prefs));
    ASSERT_EQ(prefs.Count(), 3);
    EXPECT_EQ(Log(), "");
    auto const value = [&](VString const& key) { return prefs.ObjectForKey(&key); };
    EXPECT_TRUE(value("colour")->IsEqual(VString("d\xC3\xA9j\xC3\xA0 vu")));
    EXPECT_TRUE(value("a key of more than ten characters")->IsEqual(VString("           ")));
    auto const* const list = static_cast<VObjectArray*>(value("list"));
    ASSERT_TRUE(list);
    ASSERT_EQ(list->Count(), 2) << "whatever its count says";
    EXPECT_TRUE(list->ObjectAtIndex(0)->IsEqual(VString("<&>")));
    EXPECT_TRUE(list->ObjectAtIndex(1)->IsEqual(VString("\r\n blanks & lines ")));
    VDictionary again;
    std::string const saved = Saved([&](VXMLFile& saving) { saving.WriteObject("prefs", prefs); });
    EXPECT_TRUE(Document(saved).ReadObject("prefs", again));
    EXPECT_EQ(Saved([&](VXMLFile& saving) { saving.WriteObject("prefs", again); }), saved);
}

} // namespace
