#include "foundation/persistence/IXMLFileIO.h"
#include "tests/persistence/XMLTestSupport.h"

#include <functional>
#include <vector>

namespace {

using namespace testing_support;

using XMLFile = XMLBackEndTest;

constexpr char kDocument[] =
    "<R><A n='1' name='x'/>text<B><C/></B><a n='2' name='Y'/><!-- c --><A n='3'/>more</R>";

std::string Attribute(VXMLFile& file) {
    char const* value = nullptr;
    return file.ReadAttribute("n", value) ? value : "-";
}

ON_EACH_BACK_END(XMLFile);

TEST_P(XMLFile, MovesOverElementsByNameWithoutRegardToCase) {
    Document file(kDocument);
    EXPECT_FALSE(file.OpenFirstChildElement("Z"));
    EXPECT_STREQ(file.GetNodeName(), "R") << "the cursor stays where nothing is found";
    std::string found;
    for (bool first = true; file.OpenChildElement("a", first);) {
        found += Attribute(file);
    }
    EXPECT_EQ(found, "123");
    EXPECT_EQ(file.GetLevel(), 4) << "a move counts as an opening";
    EXPECT_TRUE(file.CloseChild());
    EXPECT_TRUE(file.OpenFirstChildElement("A", "y"));
    EXPECT_EQ(Attribute(file), "2");
    EXPECT_FALSE(file.OpenNextSiblingElement("A", "x"));
    EXPECT_TRUE(file.CloseChild());
    EXPECT_FALSE(file.OpenFirstChildElement("A", "z"));
    EXPECT_STREQ(file.GetNodeName(), "R") << "back at the parent";
}

TEST_P(XMLFile, StaysOpenWithAnotherRoot) {
    VXMLFile file;
    EXPECT_FALSE(Load(file, kDocument, "Other"));
    EXPECT_STREQ(file.GetErrorStr(), "Parsing failure");
    EXPECT_TRUE(file.IsValid());
    EXPECT_TRUE(file.IsLoading());
    EXPECT_FALSE(file.OpenFirstChildElement("Older"));
    EXPECT_TRUE(file.OpenFirstChildElement("R"));
    EXPECT_TRUE(file.OpenFirstChildElement("B"));
    EXPECT_FALSE(Load(file, "<R", "R"));
    EXPECT_FALSE(file.IsValid()) << "a text that does not load leaves nothing open";
    EXPECT_FALSE(file.OpenFileForWrite(Path("never").c_str(), nullptr));
    EXPECT_FALSE(file.IsValid());
    EXPECT_EQ(Entries(), 0);
}

TEST_P(XMLFile, MovesOverEveryKindOfNode) {
    Document file(kDocument);
    std::string kinds;
    EXPECT_TRUE(file.OpenChildren());
    while (file.OpenNextSibling()) {
        kinds += std::to_string(file.GetNodeType());
    }
    EXPECT_EQ(kinds, "1411214");
    EXPECT_EQ(file.GetLevel(), 2) << "a move to any sibling does not count";
    char const* text = nullptr;
    EXPECT_TRUE(file.ReadText(text));
    EXPECT_STREQ(text, "more");
    EXPECT_FALSE(file.WriteAttribute("n", "1"));
    EXPECT_FALSE(file.ReadAttribute("n", text)) << "on a text";
    EXPECT_TRUE(file.CloseChildren());
    EXPECT_TRUE(file.OpenFirstChildText());
    EXPECT_TRUE(file.OpenNextSiblingText());
    EXPECT_TRUE(file.ReadText(text));
    EXPECT_STREQ(text, "more");
    EXPECT_TRUE(file.CloseChild());
    EXPECT_FALSE(file.ReadText(text));
    EXPECT_FALSE(file.WriteText("x")) << "on an element";
    EXPECT_TRUE(file.OpenChildren());
    EXPECT_TRUE(file.CloseChildren()) << "no child was opened";
    EXPECT_STREQ(file.GetNodeName(), "R");
    EXPECT_TRUE(file.CloseChild());
    EXPECT_EQ(file.GetNodeType(), IXMLFileIO::kDocument);
    EXPECT_FALSE(file.CloseChild());
}

TEST_P(XMLFile, BuildsWhatTheCursorIsToldTo) {
    VXMLFile file;
    ASSERT_TRUE(file.OpenFileForWrite(Path("f").c_str(), "R"));
    EXPECT_TRUE(file.OpenChildren());
    EXPECT_TRUE(file.OpenNextSiblingElement("A", "x"));
    EXPECT_TRUE(file.WriteAttribute("n", "1"));
    EXPECT_TRUE(file.WriteAttribute("n", "2"));
    EXPECT_TRUE(file.OpenNextSiblingElement("B"));
    EXPECT_TRUE(file.OpenFirstChildText());
    EXPECT_TRUE(file.WriteText("<t>"));
    EXPECT_FALSE(file.WriteAttribute("n", "1")) << "on a text";
    EXPECT_TRUE(file.CloseChild());
    EXPECT_TRUE(file.CloseChildren());
    EXPECT_EQ(file.GetLevel(), 1);
    EXPECT_FALSE(file.OpenFirstChildElement(nullptr)) << "creates nothing";
    EXPECT_EQ(Entries(), 0) << "only closing writes";
    EXPECT_TRUE(file.CloseFile());
    EXPECT_EQ(BytesOf(Path("f")), "<R>\n    <A name=\"x\" n=\"2\" />\n    <B>&lt;t&gt;</B>\n</R>\n");
    EXPECT_FALSE(file.IsValid());
    EXPECT_FALSE(file.CloseFile());
    EXPECT_EQ(file.GetMode(), IXMLFileIO::kNoDocument);
}

TEST_P(XMLFile, SavesNothingOfADocumentThatLostSomething) {
    auto const fill = [](VXMLFile& file, int levels, int attributes) {
        while (file.GetLevel() < levels && file.OpenFirstChildElement("e")) {
        }
        for (int i = 0; i < attributes; ++i) {
            file.WriteAttribute(("a" + std::to_string(i)).c_str(), "v");
        }
    };
    constexpr int kNesting = IXMLFileIO::kMaxNesting;
    constexpr int kAttributes = IXMLFileIO::kMaxAttributes;
    Document const limits(Saved([&](VXMLFile& file) {
        fill(file, kNesting, kAttributes);
        EXPECT_TRUE(file.WriteAttribute("a5", "replaced"));
    }));
    for (auto const& write : std::vector<std::function<void(VXMLFile&)>>{
             [](VXMLFile& file) { EXPECT_FALSE(file.OpenFirstChildElement("a b")); },
             [](VXMLFile& file) { EXPECT_FALSE(file.WriteAttribute("1", "x")); },
             [](VXMLFile& file) { EXPECT_FALSE(file.OpenNextSiblingElement("SecondRoot")); },
             [](VXMLFile& file) {
                 EXPECT_TRUE(file.OpenFirstChildText());
                 EXPECT_FALSE(file.OpenFirstChildElement("e"));
             },
             [&](VXMLFile& file) { fill(file, kNesting + 1, 0); },
             [&](VXMLFile& file) { fill(file, 0, kAttributes + 1); }}) {
        EXPECT_EQ(Saved(write), "(refused)");
    }
}

TEST_P(XMLFile, SaysWhyItFailed) {
    VXMLFile file;
    auto const loading = [&](std::string const& path) {
        EXPECT_FALSE(file.OpenFileForRead(path.c_str(), "R"));
        return std::string(file.ErrorDescription().CString());
    };
    auto const saving = [&](std::string const& path, char const* element) {
        EXPECT_TRUE(file.OpenFileForWrite(path.c_str(), "R"));
        file.OpenFirstChildElement(element);
        EXPECT_FALSE(file.CloseFile());
        return std::string(file.ErrorDescription().CString());
    };
    std::string const path = Path("f");
    EXPECT_EQ(loading(path), "cannot load " + path + ": No such file or directory");
    EXPECT_EQ(loading(m_folder.string()), "cannot load " + m_folder.string() + ": Is a directory");
    EXPECT_EQ(loading("/dev/null"), "cannot load /dev/null: not a regular file");
    std::ofstream(path) << "<Other>\n<a></b></Other>";
    EXPECT_EQ(loading(path),
              "cannot load " + path +
                  " at line 2, column 7: not a well-formed document, or one beyond the limits");
    std::ofstream(path) << "<Other/>";
    EXPECT_EQ(loading(path), "cannot load " + path + ": the root element has another name");
    EXPECT_EQ(saving(path, "a b"),
              "cannot save " + path + ": the document refused something that was written");
    EXPECT_EQ(saving("/dev/full", "e"), "cannot save /dev/full: No space left on device");
    EXPECT_EQ(saving(path + "/f", "e"), "cannot save " + path + "/f: Not a directory");
    EXPECT_FALSE(file.OpenFileForWrite(path.c_str(), "a b"));
    EXPECT_EQ(file.ErrorDescription(), "cannot start " + path + ": no name for a root element");
    VString target;
    EXPECT_TRUE(file.WriteFileToString(target, "R"));
    file.OpenFirstChildElement("a b");
    EXPECT_FALSE(file.CloseFile());
    EXPECT_EQ(file.ErrorDescription(),
              "cannot save a document: the document refused something that was written");
    EXPECT_TRUE(Load(file, "<R/>"));
    EXPECT_TRUE(file.ErrorDescription().IsEmpty());
}

TEST_P(XMLFile, SavesAndLoadsOneObject) {
    std::string const path = Path("f");
    VXMLFile file;
    VString text("old");
    ASSERT_TRUE(file.SaveObject(path.c_str(), "R", VString("new")));
    EXPECT_TRUE(file.LoadObject(path.c_str(), "R", text));
    EXPECT_EQ(text, "new");
    EXPECT_FALSE(file.IsValid());
    EXPECT_FALSE(file.SaveObject((path + "/f").c_str(), "R", text));
    EXPECT_EQ(file.ErrorDescription(), "cannot save " + path + "/f: Not a directory");
    VObjectArray array;
    EXPECT_FALSE(file.LoadObject(path.c_str(), "R", array));
    EXPECT_EQ(file.ErrorDescription(), "cannot load all of " + path + ": the object is not in it");
    std::ofstream(path) << "<R>\n<VObjectArray count='3'><VString string='a'/><Unknown/></VObjectArray></R>";
    EXPECT_FALSE(file.LoadObject(path.c_str(), "R", array));
    EXPECT_EQ(array.Count(), 1);
    EXPECT_EQ(file.ErrorDescription(),
              "cannot load all of " + path +
                  ": R/VObjectArray/Unknown at line 2, column 46: unknown class (Unknown), and 1 more");
}

TEST_P(XMLFile, WorksWithoutABackEnd) {
    struct NoBackEnds : IXMLFileIOFactory {
        IXMLFileIO* New() override { return nullptr; }
    };
    VXMLFile working;
    EXPECT_FALSE(Load(working, "<R"));
    EXPECT_STREQ(VObjectRef<VXMLFile>::Adopt(working.Copy())->GetErrorStr(), "Parsing failure");
    VXMLFile::SetIXMLFileIOFactory(new NoBackEnds);
    EXPECT_STREQ(VXMLFile().GetErrorStr(), "XML lib init failed");
    VXMLFile::ClearIXMLFileIOFactory();
    VXMLFile file;
    VString text;
    EXPECT_FALSE(Load(file, kDocument));
    EXPECT_FALSE(file.WriteFileToString(text, "R"));
    EXPECT_FALSE(file.OpenFirstChild());
    EXPECT_FALSE(file.WriteObject(nullptr, text));
    EXPECT_FALSE(file.CloseFile());
    EXPECT_EQ(Attribute(file), "-");
    EXPECT_STREQ(file.GetErrorStr(), "XML lib disabled");
    EXPECT_TRUE(Load(working, kDocument)) << "keeps its own back end";
    EXPECT_STREQ(working.GetErrorStr(), "None");
}

} // namespace
