#include "tests/persistence/XMLTestSupport.h"
#include "tests/support/Counted.h"

namespace {

using namespace testing_support;

class Dictionary : public XML {
  protected:
    VObject* ValueOf(char const* key) const {
        VString const string(key);
        return m_dictionary.ObjectForKey(&string);
    }
    void Set(VObject* value, char const* key) {
        VString const string(key);
        m_dictionary.SetObjectForKey(value, &string);
    }

    VDictionary m_dictionary;
};

TEST_F(Dictionary, KeepsCopiesOfItsKeys) {
    auto const value = VObjectRef<ACounted>::Adopt(new ACounted);
    auto const other = VObjectRef<ACounted>::Adopt(new ACounted);
    VString key("key");
    m_dictionary.SetObjectForKey(value.Get(), &key);
    key = "changed";
    EXPECT_EQ(m_dictionary.ObjectForKey(&key), nullptr);
    EXPECT_EQ(ValueOf("key"), value.Get());
    VObject const* const stored = m_dictionary.Keys()->ObjectAtIndex(0);
    EXPECT_EQ(stored->RetainCount(), 1);
    EXPECT_EQ(value->RetainCount(), 2);

    Set(other.Get(), "key");
    EXPECT_EQ(m_dictionary.Count(), 1);
    EXPECT_EQ(m_dictionary.Keys()->ObjectAtIndex(0), stored) << "an equal key stays the object it was";
    EXPECT_EQ(ValueOf("key"), other.Get());
    EXPECT_EQ(value->RetainCount(), 1);
}

TEST_F(Dictionary, SurvivesUnusualEntries) {
    ACounted* const only = new ACounted;
    Set(only, "key");
    only->Release();
    Set(only, "key"); // the dictionary holds the one reference
    EXPECT_EQ(ACounted::ms_alive, 1);
    m_dictionary.SetObjectForKey(only, nullptr);
    m_dictionary.SetObjectForKey(&m_dictionary, &m_dictionary);
    Set(nullptr, "null");
    EXPECT_EQ(m_dictionary.Count(), 3);
    EXPECT_EQ(ValueOf("null"), nullptr);
    EXPECT_EQ(m_dictionary.ObjectForKey(nullptr), nullptr);
    EXPECT_FALSE(m_dictionary.RemoveObjectForKey(nullptr));
    VString const key("key");
    EXPECT_TRUE(m_dictionary.RemoveObjectForKey(&key));
    EXPECT_FALSE(m_dictionary.RemoveObjectForKey(&key));
    EXPECT_EQ(m_dictionary.Keys()->Count(), m_dictionary.Values()->Count());
}

TEST_F(Dictionary, CopiesDeeply) {
    Set(VString::EmptyString(), "a");
    auto const copy = VObjectRef<VDictionary>::Adopt(m_dictionary.Copy());
    copy->DeepCopyContents(*copy);
    EXPECT_NE(copy->Values()->ObjectAtIndex(0), ValueOf("a"));
    VString text;
    copy->GetDescription(text);
    EXPECT_STREQ(text.CString(),
                 "[VDictionary]\n items: 1\nkeyArray:\n[VObjectArray] items: 1\n  [VString] \n"
                 "valueArray:\n[VObjectArray] items: 1\n  [VString] ");
}

TEST_F(Dictionary, IsSavedAsPairs) {
    auto const saved = [this] {
        return Saved([this](VXMLFile& file) { file.WriteObject("d", m_dictionary); });
    };
    EXPECT_EQ(saved(), R"(<R><VDictionary name="d" version="2" count="0" /></R>)");
    Set(VObjectRef<VString>::Adopt(VString::NewString("(1, 2)")).Get(), "colour");
    Set(nullptr, "null");
    EXPECT_EQ(saved(), "<R><VDictionary name=\"d\" version=\"2\" count=\"2\"><VDictionaryPair>"
                       "<VString string=\"colour\" /><VString string=\"(1, 2)\" /></VDictionaryPair>"
                       "<VDictionaryPair><VString string=\"null\" /></VDictionaryPair></VDictionary></R>");
    VDictionary read;
    VXMLFile file;
    EXPECT_TRUE(Load(file, saved()) && file.ReadObject("d", read));
    EXPECT_EQ(read.Count(), 1) << "an entry without a value is lost";
    EXPECT_EQ(Log(), "VDictionaryPair::SerializeAsXML - Error opening second child element\n");
}

TEST_F(Dictionary, SkipsWhatIsNoPair) {
    auto const load = [this](std::string const& content) {
        VXMLFile file;
        Log();
        return Load(file, "<R><VDictionary " + content + "</VDictionary></R>") &&
               file.ReadObject(nullptr, m_dictionary);
    };
    EXPECT_TRUE(load("version='2' count='9'><VString/><Unknown/><VDictionaryPair/>"
                     "<VDictionaryPair><Unknown/><VString/></VDictionaryPair>"
                     "<p class='VDictionaryPair'><VString string='k'/><x class='VString' string='v'/></p>"));
    EXPECT_TRUE(m_dictionary.Count() == 1 && ValueOf("k")->IsEqual(VString("v")));
    EXPECT_EQ(Log(), "VObjectArray::SerializeAsXML - Inappropriate class element in VDictionary 'VString'\n"
                     "VObjectArray::SerializeAsXML - Inappropriate class element in VDictionary 'Unknown'\n"
                     "VDictionaryPair::SerializeAsXML - Error opening first child element\n"
                     "VDictionaryPair::SerializeAsXML - No class for className 'Unknown'\n");
    EXPECT_TRUE(load("version='2' count='1'>"));
    EXPECT_EQ(Log(), "VObjectArray::SerializeAsXML - Error opening first child element\n");
    EXPECT_TRUE(load("version='2' count='0'><VDictionaryPair/>") && Log().empty());
    EXPECT_EQ(m_dictionary.Count(), 1) << "what was there stays";
    EXPECT_TRUE(load("version='3'><VObjectArray name='keyArray' count='2'><VString/><VString/></VObjectArray>"
                     "<VObjectArray name='valueArray' count='1'><VString/></VObjectArray>"));
    EXPECT_EQ(m_dictionary.Keys()->Count(), 1);
    EXPECT_EQ(m_dictionary.Values()->Count(), 1);
    EXPECT_TRUE(load("><VObjectArray name='keyArray' count='1'><VString/></VObjectArray>"));
    EXPECT_EQ(m_dictionary.Count(), 0) << "keys without values";
}

} // namespace
