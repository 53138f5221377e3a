#include "foundation/persistence/IXMLFileIO.h"
#include "tests/persistence/XMLTestSupport.h"

namespace {

using namespace testing_support;

constexpr char kDocument[] =
    "<R><A n='1' name='x'/>text<B><C/></B><a n='2' name='Y'/><!-- c --><A n='3'/>more</R>";

std::string Attribute(VXMLFile& file) {
    char const* value = nullptr;
    return file.ReadAttribute("n", value) ? value : "-";
}

TEST_F(XML, MovesOverElementsWithoutRegardToCase) {
    VXMLFile file;
    ASSERT_TRUE(Load(file, kDocument));
    EXPECT_EQ(file.GetMode(), IXMLFileIO::kLoading);
    EXPECT_FALSE(file.OpenFirstChildElement("Z"));
    EXPECT_STREQ(file.GetNodeName(), "R") << "the cursor stays where nothing is found";
    ASSERT_TRUE(file.OpenFirstChildElement("a"));
    EXPECT_EQ(file.GetLevel(), 2);
    std::string found = Attribute(file);
    while (file.OpenNextSiblingElement("A")) {
        found += Attribute(file);
    }
    EXPECT_EQ(found, "123");
    EXPECT_EQ(file.GetLevel(), 4) << "a move counts as an opening";
    EXPECT_TRUE(file.CloseChild());
    EXPECT_STREQ(file.GetNodeName(), "R");

    bool first = true;
    EXPECT_FALSE(file.OpenChildElement("Z", first));
    EXPECT_TRUE(first);
    EXPECT_TRUE(file.OpenChildElement(nullptr, first));
    EXPECT_TRUE(!first && file.OpenChildElement(nullptr, first));
    EXPECT_STREQ(file.GetNodeName(), "B");
}

TEST_F(XML, MovesOverNamedElements) {
    VXMLFile file;
    ASSERT_TRUE(Load(file, kDocument));
    EXPECT_TRUE(file.OpenFirstChildElement("A", "y"));
    EXPECT_EQ(Attribute(file), "2");
    EXPECT_FALSE(file.OpenNextSiblingElement("A", "x"));
    EXPECT_TRUE(file.CloseChild());
    EXPECT_FALSE(file.OpenFirstChildElement("A", "z"));
    EXPECT_STREQ(file.GetNodeName(), "R") << "back at the parent";
    EXPECT_EQ(Saved([](VXMLFile& saving) {
                  saving.OpenFirstChildElement("A", "x");
                  saving.OpenNextSiblingElement("A", "y");
              }),
              R"(<R><A name="x" /><A name="y" /></R>)");
}

TEST_F(XML, MovesOverEveryKindOfNode) {
    VXMLFile file;
    ASSERT_TRUE(Load(file, kDocument));
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
    EXPECT_FALSE(file.WriteAttribute("n", "1") || file.ReadAttribute("n", text)) << "on a text";
    EXPECT_TRUE(file.CloseChildren());
    EXPECT_TRUE(file.OpenFirstChildText() && file.OpenNextSiblingText());
    EXPECT_TRUE(file.ReadText(text) && std::string(text) == "more");
    EXPECT_TRUE(file.CloseChild());
    EXPECT_FALSE(file.ReadText(text) || file.WriteText("x")) << "on an element";
    EXPECT_TRUE(file.OpenChildren() && file.CloseChildren()) << "no child was opened";
    EXPECT_STREQ(file.GetNodeName(), "R");
    EXPECT_TRUE(file.OpenChildren());
    EXPECT_FALSE(file.OpenNextSiblingElement("Z"));
    EXPECT_TRUE(file.CloseChildren());
    EXPECT_TRUE(file.CloseChild());
    EXPECT_EQ(file.GetNodeType(), IXMLFileIO::kDocument);
    EXPECT_FALSE(file.CloseChild());
}

TEST_F(XML, BuildsWhatTheCursorIsToldTo) {
    auto const write = [](VXMLFile& file) {
        EXPECT_EQ(file.GetMode(), IXMLFileIO::kSaving);
        EXPECT_TRUE(file.OpenChildren() && file.OpenNextSiblingElement("A"));
        EXPECT_TRUE(file.WriteAttribute("n", "1") && file.WriteAttribute("n", "2"));
        EXPECT_TRUE(file.OpenNextSiblingElement("B"));
        EXPECT_TRUE(file.OpenFirstChildText() && file.WriteText("<t>"));
        EXPECT_FALSE(file.WriteAttribute("n", "1")) << "on a text";
        EXPECT_TRUE(file.CloseChild() && file.CloseChildren());
        EXPECT_EQ(file.GetLevel(), 1);
        EXPECT_FALSE(file.OpenFirstChildElement(nullptr)) << "creates nothing";
    };
    EXPECT_EQ(Saved(write), R"(<R><A n="2" /><B>&lt;t&gt;</B></R>)");

    VXMLFile file;
    ASSERT_TRUE(file.OpenFileForWrite(Path("f").c_str(), "R"));
    write(file);
    EXPECT_FALSE(std::filesystem::exists(Path("f"))) << "only closing writes";
    EXPECT_TRUE(file.CloseFile());
    EXPECT_EQ(Contents(Path("f")), "<R>\n    <A n=\"2\" />\n    <B>&lt;t&gt;</B>\n</R>\n");
    EXPECT_FALSE(file.IsValid() || file.CloseFile());
    EXPECT_EQ(file.GetMode(), IXMLFileIO::kNoDocument);
}

TEST_F(XML, SavesNothingOfADocumentThatLostSomething) {
    auto const refused = [](auto write) { return Saved(write) == "(refused)"; };
    EXPECT_TRUE(refused([](VXMLFile& file) { EXPECT_FALSE(file.OpenFirstChildElement("a b")); }));
    EXPECT_TRUE(refused([](VXMLFile& file) { EXPECT_FALSE(file.WriteAttribute("1", "x")); }));
    EXPECT_TRUE(refused([](VXMLFile& file) { EXPECT_FALSE(file.OpenNextSiblingElement("SecondRoot")); }));
    EXPECT_TRUE(refused([](VXMLFile& file) {
        EXPECT_TRUE(file.OpenFirstChildText());
        EXPECT_FALSE(file.OpenFirstChildElement("inText"));
    }));
    std::string const deepest = Saved([](VXMLFile& file) {
        while (file.GetLevel() < IXMLFileIO::kMaxNesting) {
            ASSERT_TRUE(file.OpenFirstChildElement("e"));
        }
        for (int i = 0; i < IXMLFileIO::kMaxAttributes; ++i) {
            ASSERT_TRUE(file.WriteAttribute(("a" + std::to_string(i)).c_str(), "v"));
        }
        EXPECT_TRUE(file.WriteAttribute("a5", "replaced"));
    });
    VXMLFile file;
    EXPECT_TRUE(Load(file, deepest)) << "what just fits is read";
    EXPECT_TRUE(refused([](VXMLFile& saving) {
        while (saving.OpenFirstChildElement("e")) {
        }
        EXPECT_EQ(saving.GetLevel(), IXMLFileIO::kMaxNesting);
    }));
    EXPECT_TRUE(refused([](VXMLFile& saving) {
        for (int i = 0; i <= IXMLFileIO::kMaxAttributes; ++i) {
            saving.WriteAttribute(("a" + std::to_string(i)).c_str(), "v");
        }
    }));
}

TEST_F(XML, WorksWithoutABackEnd) {
    struct NoBackEnds : IXMLFileIOFactory {
        IXMLFileIO* New() override { return nullptr; }
    };
    VXMLFile working;
    EXPECT_STREQ(working.GetErrorStr(), "None");
    EXPECT_FALSE(Load(working, "<R"));
    EXPECT_STREQ(working.GetErrorStr(), "Parsing failure");
    EXPECT_STREQ(VObjectRef<VXMLFile>::Adopt(working.Copy())->GetErrorStr(), "Parsing failure");

    VXMLFile::SetIXMLFileIOFactory(new NoBackEnds);
    EXPECT_STREQ(VXMLFile().GetErrorStr(), "XML lib init failed");
    VXMLFile::ClearIXMLFileIOFactory();
    VXMLFile file;
    VString text;
    char const* value = "";
    EXPECT_FALSE(Load(file, kDocument) || file.WriteFileToString(text, "R") || file.OpenFirstChild() ||
                 file.ReadAttribute("n", value) || file.WriteObject(nullptr, text) || file.CloseFile());
    EXPECT_EQ(value, nullptr);
    EXPECT_STREQ(file.GetNodeName(), "");
    EXPECT_STREQ(file.GetErrorStr(), "XML lib disabled");
    EXPECT_TRUE(Load(working, kDocument)) << "keeps its own back end";
    EXPECT_STREQ(working.GetErrorStr(), "None");
}

} // namespace
