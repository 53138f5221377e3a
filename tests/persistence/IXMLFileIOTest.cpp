#include "foundation/persistence/IXMLFileIO.h"
#include "tests/persistence/XMLTestSupport.h"

#include <numeric>
#include <sstream>
#include <sys/stat.h>

namespace {

using namespace testing_support;

using XMLFileIO = XMLBackEndTest;

ON_EACH_BACK_END(XMLFileIO);

TEST_P(XMLFileIO, KeepsTextsBesideOtherNodes) {
    std::string everyByte(255, '\0');
    std::iota(everyByte.begin(), everyByte.end(), '\1');
    std::string const texts[] = {"one", "two & \xE9\x01", "   ", " \n ", everyByte, std::string(100000, 'x')};
    Document file(Saved([&](VXMLFile& saving) {
        saving.OpenChildren();
        for (auto const& text : texts) {
            EXPECT_TRUE(saving.OpenNextSiblingText());
            EXPECT_TRUE(saving.WriteText(text.c_str()));
        }
        EXPECT_TRUE(saving.OpenNextSiblingElement("E"));
        EXPECT_TRUE(saving.WriteAttribute("a", everyByte.c_str()));
    }));
    char const* read = nullptr;
    file.OpenChildren();
    for (auto const& text : texts) {
        EXPECT_TRUE(file.OpenNextSiblingText());
        ASSERT_TRUE(file.ReadText(read));
        EXPECT_EQ(read, text);
    }
    EXPECT_TRUE(file.OpenNextSiblingElement("E"));
    EXPECT_TRUE(file.ReadAttribute("a", read));
    EXPECT_EQ(read, everyByte);
}

TEST_P(XMLFileIO, WritesReferencesWhereCDataCannotStand) {
    EXPECT_EQ(Saved([](VXMLFile& file) {
                  EXPECT_TRUE(file.OpenFirstChildText());
                  EXPECT_TRUE(file.WriteText("a]]>b\r"));
                  EXPECT_TRUE(file.CloseChild());
                  EXPECT_TRUE(file.OpenFirstChildElement("E"));
                  EXPECT_TRUE(file.OpenFirstChildText());
                  EXPECT_TRUE(file.WriteText("<]]>"));
              }),
              "<R>a]]&gt;b&#x0D;<E>&lt;]]&gt;</E></R>");
}

TEST_P(XMLFileIO, ReadsWhatOthersWrote) {
    std::pair<char const*, char const*> const cases[] = {
        {"\xEF\xBB\xBF<?xml version='1.0'?>\n<R><T>\xC3\xA9&#xE9;&#8364;</T></R>\n",
         "\xC3\xA9\xC3\xA9\xE2\x82\xAC"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><R><T>\xE9&#xE9;</T></R>", "\xE9\xE9"},
        {"<?xml version='1.0' encoding='UTF-8' ?><R><T>\xE9&#xE9;</T></R>", "\xE9\xE9"}, // it is not
        {"<R><T>\xC3\xA9&#xE9;</T></R>", "\xC3\xA9\xE9"},
        {"<R><T>&#xE9;&#x20AC;</T></R>", "\xC3\xA9\xE2\x82\xAC"},
        {"<!DOCTYPE R SYSTEM \"r.dtd\"><?xml-stylesheet href='s'?><!-- <R> --><R><T >a</T ></R><?e?>", "a"},
        {"<R><T>a<![CDATA[<b>&amp;]]]]><![CDATA[>]]><!-- - -->c</T></R>", "a<b>&amp;]]>c"},
        {"<R>\r\n<T>a\r\nb\rc</T></R>", "a\r\nb\rc"},
        {"\xEF\xBB\xBF<R><T>\xEF\xBB\xBF</T></R>", "\xEF\xBB\xBF"},
        {"<?xml version='1.0'?><R><T> \xEF\xBF\xBE&#32;<!-- --></T></R>", " \xEF\xBF\xBE "},
        {"<R><T><![CDATA[a]]>\n <![CDATA[b]]> </T></R>", "ab"},
    };
    for (auto const& [document, text] : cases) {
        Document file(document);
        VString read;
        EXPECT_TRUE(file.OpenFirstChildElement("T"));
        EXPECT_TRUE(read.SerializeAsXML(file));
        EXPECT_EQ(read, text) << document;
    }
    std::ofstream(Path("lines")) << "<R>\r\n<T>a\r\nb\rc&#13;</T></R>";
    VXMLFile file;
    VString read;
    EXPECT_TRUE(file.OpenFileForRead(Path("lines").c_str(), "r"));
    EXPECT_TRUE(file.OpenFirstChildElement("T"));
    EXPECT_TRUE(read.SerializeAsXML(file));
    EXPECT_EQ(read, "a\nb\nc\r") << "line ends of files become line feeds";
}

TEST_P(XMLFileIO, RefusesWhatIsNotOneWellFormedDocument) {
    VXMLFile file;
    std::istringstream documents(BytesOf(PERSISTENCE_TEST_DATA "/malformed.txt")); // one a line
    int count = 0;
    for (std::string text; std::getline(documents, text); ++count) {
        EXPECT_FALSE(Load(file, text)) << text;
        EXPECT_FALSE(file.IsValid());
    }
    EXPECT_FALSE(Load(file, std::string("<R>\0</R>", 8)));
    EXPECT_GE(count, 50);
    EXPECT_FALSE(file.LoadFile("", nullptr, 10, "R"));
    EXPECT_TRUE(Load(file, std::string("<R/>\0\0", 6))) << "a terminator that was counted";
}

TEST_P(XMLFileIO, BoundsWhatItReads) {
    VXMLFile file;
    for (int const tooMany : {IXMLFileIO::kMaxNesting + 1, IXMLFileIO::kMaxAttributes + 1, 100000}) {
        std::string starts;
        std::string ends;
        std::string attributes;
        for (int i = 0; i < tooMany; ++i) {
            starts += "<R>";
            ends += "</R>";
            attributes += " a" + std::to_string(i) + "=''";
        }
        for (std::string const& text : {starts, starts + ends, "<R" + attributes + "/>"}) {
            EXPECT_FALSE(Load(file, text)) << tooMany;
        }
    }
    unsigned char const byte = '<';
    EXPECT_FALSE(file.LoadFile("", &byte, IXMLFileIO::kMaxTextSize + 1, "R"));
}

TEST_P(XMLFileIO, ReadsRegularFilesOnly) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(Path("file"), Path("link"));
    std::ofstream(Path("huge"));
    std::filesystem::resize_file(Path("huge"), IXMLFileIO::kMaxTextSize + 1); // a hole, no disk space
    VXMLFile file;
    for (char const* const name : {"pipe", "link", "huge", ".", "/dev/zero"}) {
        EXPECT_FALSE(file.OpenFileForRead((m_folder / name).c_str(), "R")) << name;
    }
    EXPECT_FALSE(file.OpenFileForRead(nullptr, "R"));
    EXPECT_FALSE(file.OpenFileForRead(Path("huge").c_str(), "R"));
    EXPECT_GE(file.ErrorDescription().Find("longer than a document may be"), 0) << "it is not read at all";
    std::ofstream(Path("file")) << "<R/>";
    EXPECT_TRUE(file.OpenFileForRead(Path("link").c_str(), "R"));
}

} // namespace
