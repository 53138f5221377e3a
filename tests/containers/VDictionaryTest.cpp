#include "foundation/core/VException.h"
#include "tests/persistence/XMLTestSupport.h"
#include "tests/support/Counted.h"

#include <functional>

namespace {

using namespace testing_support;

class VDictionaryTest : public XMLTest {
  protected:
    VObject* ValueOf(VString const& key) const { return m_dictionary.ObjectForKey(&key); }
    void Set(VObject* value, VString const& key) { m_dictionary.SetObjectForKey(value, &key); }

    VDictionary m_dictionary;
};

TEST_F(VDictionaryTest, KeepsCopiesOfItsKeys) {
    auto const value = VObjectRef<ACounted>::Adopt(new ACounted);
    VString key("key");
    m_dictionary.SetObjectForKey(value.Get(), &key);
    key = "changed";
    EXPECT_TRUE(ValueOf("changed") == nullptr);
    EXPECT_EQ(ValueOf("key"), value.Get());
    VObject const* const stored = m_dictionary.Keys()->ObjectAtIndex(0);
    EXPECT_EQ(stored->RetainCount(), 1);
    Set(VString::EmptyString(), "key");
    EXPECT_EQ(m_dictionary.Keys()->ObjectAtIndex(0), stored) << "an equal key stays the object it was";
    EXPECT_EQ(m_dictionary.Count(), 1);
    EXPECT_EQ(value->RetainCount(), 1);
}

TEST_F(VDictionaryTest, SurvivesUnusualEntries) {
    ACounted* const only = new ACounted;
    Set(only, "key");
    only->Release();
    Set(only, "key"); // the dictionary holds the one reference
    EXPECT_EQ(ACounted::ms_alive, 1);
    m_dictionary.SetObjectForKey(only, nullptr);
    m_dictionary.SetObjectForKey(&m_dictionary, &m_dictionary);
    Set(nullptr, "null");
    EXPECT_EQ(m_dictionary.Count(), 3);
    EXPECT_TRUE(!ValueOf("null"));
    EXPECT_TRUE(!m_dictionary.ObjectForKey(nullptr));
    VString const key("key");
    EXPECT_TRUE(m_dictionary.RemoveObjectForKey(&key));
    EXPECT_FALSE(m_dictionary.RemoveObjectForKey(&key));
    EXPECT_FALSE(m_dictionary.RemoveObjectForKey(nullptr));
}

TEST_F(VDictionaryTest, LooksUpTextWithoutAnObject) {
    m_dictionary.SetObjectForKey(nullptr, &m_dictionary); // a key that is no text
    m_dictionary.SetObjectForKey(VString::EmptyString(), std::string_view("a\0b", 3));
    Set(nullptr, "null");
    VString const key("a");
    EXPECT_TRUE(m_dictionary.ContainsKey(&key));
    EXPECT_TRUE(m_dictionary.ContainsKey("null"));
    EXPECT_FALSE(m_dictionary.ContainsKey(""));
    EXPECT_FALSE(m_dictionary.ContainsKey(static_cast<VObject*>(nullptr)));
    EXPECT_EQ(m_dictionary.ObjectForKey("a"), VString::EmptyString());
    auto const value = MakeObject<ACounted>();
    m_dictionary.SetObjectForKey(value.Get(), "a");
    std::vector<VObject*> values;
    for (auto const& [entryKey, entryValue] : m_dictionary) {
        EXPECT_NE(entryKey, nullptr);
        values.push_back(entryValue);
    }
    EXPECT_EQ(values, (std::vector<VObject*>{nullptr, value.Get(), nullptr}));
    EXPECT_TRUE(m_dictionary.RemoveObjectForKey("a"));
    EXPECT_FALSE(m_dictionary.RemoveObjectForKey("a"));
    EXPECT_EQ(value->RetainCount(), 1);
}

TEST_F(VDictionaryTest, CopiesDeeply) {
    Set(VString::EmptyString(), "a");
    auto const copy = VObjectRef<VDictionary>::Adopt(m_dictionary.Copy());
    EXPECT_NE(copy->Values()->ObjectAtIndex(0), ValueOf("a"));
    EXPECT_STREQ(copy->Description().CString(),
                 "[VDictionary]\n items: 1\nkeyArray:\n[VObjectArray] items: 1\n  [VString] \n"
                 "valueArray:\n[VObjectArray] items: 1\n  [VString] ");
}

TEST_F(VDictionaryTest, ChangesAsAWholeOrNotAtAll) {
    VString const key("key");
    for (VObjectArray* const array : {m_dictionary.Keys(), m_dictionary.Values()}) {
        array->FreeMem();
        array->SetGrowSize(0);
        Set(VString::EmptyString(), "key");
        EXPECT_EQ(m_dictionary.Keys()->Count() + m_dictionary.Values()->Count(), 0);
        array->SetGrowSize(32);
    }
    Set(VString::EmptyString(), "key");
    struct AKey : ACounted {
        VObject* Copy() const override { return new AKey; }
        void Retain() const override { throw 1; }
    } const unkept;
    EXPECT_THROW(m_dictionary.SetObjectForKey(VString::EmptyString(), &unkept), int);
    EXPECT_EQ(m_dictionary.Values()->Count(), 1);
    VObject const* stored = m_dictionary.Keys()->ObjectAtIndex(0);
    m_dictionary.DeepCopyContents(m_dictionary);
    EXPECT_NE(m_dictionary.Keys()->ObjectAtIndex(0), stored);
    EXPECT_TRUE(ValueOf("key")->IsEqual(*VString::EmptyString()));
    stored = m_dictionary.Keys()->ObjectAtIndex(0);
    VDictionary other;
    other.SetObjectForKey(VString::EmptyString(), VString::EmptyString());
    other.SetObjectForKey(VObjectRef<VObject>::Adopt(new ALast<ACounted>([] {})).Get(), &key);
    EXPECT_THROW(m_dictionary.DeepCopyContents(other), int);
    EXPECT_THROW((void)other.Copy(), int);
    VObjectRef<VObject> inner;
    for (int level = 0; level < VDictionary::kMaxCopiedNesting; ++level) {
        auto const outer = VObjectRef<VDictionary>::Adopt(VDictionary::New());
        outer->SetObjectForKey(inner.Get(), &key);
        inner.Exchange(outer.Get());
    }
    VObjectRef<VObject>::Adopt(inner->Copy()).Exchange(nullptr);
    other.SetObjectForKey(inner.Get(), &key);
    EXPECT_THROW(m_dictionary.DeepCopyContents(other), VException);
    EXPECT_EQ(m_dictionary.Count(), 1);
    EXPECT_EQ(m_dictionary.Keys()->ObjectAtIndex(0), stored);
    EXPECT_NE(ValueOf("key"), nullptr);
}

TEST_F(VDictionaryTest, MayBeUsedByDestructorsOfItsEntries) {
    VString const key("key");
    VString const another("another");
    auto dictionary = VObjectRef<VDictionary>::Adopt(VDictionary::New());
    VDictionary* const raw = dictionary.Get();
    int deaths = 0;
    auto const setDying = [&](std::function<void()> act) {
        auto const value = VObjectRef<VObject>::Adopt(new ALast<ACounted>([&deaths, act] {
            ++deaths;
            act();
        }));
        raw->SetObjectForKey(value.Get(), &key);
    };
    raw->SetObjectForKey(VString::EmptyString(), &another);
    setDying([&] {
        EXPECT_EQ(raw->ObjectForKey(&key), VString::EmptyString()); // what replaced it
        EXPECT_TRUE(raw->RemoveObjectForKey(&another));
    });
    raw->SetObjectForKey(VString::EmptyString(), &key);
    setDying([&] {
        EXPECT_EQ(raw->ObjectForKey(&key), nullptr);
        raw->SetObjectForKey(VString::EmptyString(), &another);
    });
    EXPECT_TRUE(raw->RemoveObjectForKey(&key));
    EXPECT_EQ(raw->ObjectForKey(&another), VString::EmptyString());
    setDying([&] {
        raw->SetObjectForKey(VString::EmptyString(), &another);
        EXPECT_EQ(raw->ObjectForKey(&key), nullptr);
        raw->DeepCopyContents(m_dictionary);
    });
    auto const keys = VObjectRef<VObjectArray>(raw->Keys());
    dictionary.Exchange(nullptr);
    EXPECT_EQ(keys->RetainCount(), 1);
    EXPECT_EQ(deaths, 3);
}

TEST_F(VDictionaryTest, SaysWhenItWasNotWritten) {
    VDictionaryPair nothing;
    VDictionaryPair whole;
    whole.SetKey(VString::EmptyString());
    whole.SetValue(VString::EmptyString());
    Set(&m_dictionary, "circle");
    for (VObject* const object : std::initializer_list<VObject*>{&m_dictionary, &nothing, &whole}) {
        EXPECT_EQ(Saved([&](VXMLFile& file) { EXPECT_EQ(object->SerializeAsXML(file), object == &whole); }) ==
                      "(refused)",
                  object == &m_dictionary);
    }
    VString const key("circle");
    m_dictionary.RemoveObjectForKey(&key);
}

TEST_F(VDictionaryTest, IsSavedAsPairs) {
    auto const saved = [this] {
        return Saved([this](VXMLFile& file) { file.WriteObject("d", m_dictionary); });
    };
    EXPECT_EQ(saved(), R"(<R><VDictionary name="d" version="2" count="0" /></R>)");
    Set(VString::EmptyString(), "colour");
    Set(nullptr, "null");
    EXPECT_EQ(saved(), "<R><VDictionary name=\"d\" version=\"2\" count=\"2\"><VDictionaryPair>"
                       "<VString string=\"colour\" /><VString string=\"\" /></VDictionaryPair>"
                       "<VDictionaryPair><VString string=\"null\" /></VDictionaryPair></VDictionary></R>");
    VDictionary read;
    EXPECT_TRUE(Document(saved()).ReadObject("d", read));
    EXPECT_EQ(read.Count(), 1) << "a null value is lost";
    EXPECT_EQ(Log(), "VDictionaryPair::SerializeAsXML - Error opening second child element\n");
}

TEST_F(VDictionaryTest, SkipsWhatIsNoPair) {
    auto const load = [this](std::string const& content) {
        Log();
        return Document("<R><VDictionary " + content + "</VDictionary></R>")
            .ReadObject(nullptr, m_dictionary);
    };
    EXPECT_TRUE(load("version='2' count='9'><VString/><Unknown/><VDictionaryPair/>"
                     "<VDictionaryPair><Unknown/><VString/></VDictionaryPair>"
                     "<p class='VDictionaryPair'><VString string='k'/><x class='VString' string='v'/></p>"));
    EXPECT_EQ(m_dictionary.Count(), 1);
    EXPECT_TRUE(ValueOf("k")->IsEqual(VString("v")));
    EXPECT_EQ(Log(), "VObjectArray::SerializeAsXML - Inappropriate class element in VDictionary 'VString'\n"
                     "VObjectArray::SerializeAsXML - Inappropriate class element in VDictionary 'Unknown'\n"
                     "VDictionaryPair::SerializeAsXML - Error opening first child element\n"
                     "VDictionaryPair::SerializeAsXML - No class for className 'Unknown'\n");
    EXPECT_TRUE(load("version='2' count='1'>"));
    EXPECT_EQ(Log(), "VObjectArray::SerializeAsXML - Error opening first child element\n");
    EXPECT_TRUE(load("version='2' count='0'><VDictionaryPair/>"));
    EXPECT_TRUE(Log().empty());
    EXPECT_EQ(m_dictionary.Count(), 1);
    EXPECT_TRUE(load("version='3'><VObjectArray name='keyArray' count='2'><VString/><VString/></VObjectArray>"
                     "<VObjectArray name='valueArray' count='1'><VString/></VObjectArray>"));
    EXPECT_EQ(m_dictionary.Keys()->Count() + m_dictionary.Values()->Count(), 2);
    EXPECT_TRUE(load("><VObjectArray name='keyArray' count='1'><VString/></VObjectArray>"));
    EXPECT_EQ(m_dictionary.Count(), 0) << "keys without values";
}

} // namespace
