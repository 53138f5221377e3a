#include "foundation/persistence/IXMLFileIO.h"
#include "tests/persistence/XMLTestSupport.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <sstream>
#include <sys/stat.h>

namespace {

using namespace testing_support;

using XMLFileIOTinyXml = XMLTest;

std::vector<std::string> AwkwardTexts() {
    std::vector<std::string> texts = {
        "",
        "tencharact",
        "elevenchars",
        "  leading, trailing and    repeated blanks  ",
        "line\nfeeds\r\nand\rreturns \n",
        R"(quotes " ' and <&> with &amp; &#x41; &#65; &#x<b;)",
        "a CDATA end ]]> and ]]]]>> within",
        std::string(11, ' '),
        std::string(11, '\r'),
        "\xEF\xBB\xBF begins like a byte order mark",
        "Latin-1 \xE9\xE8 and UTF-8 \xC3\xA9\xE2\x82\xAC and broken \xE2\x82",
        std::string(100000, 'x'),
    };
    std::string everyByte(255, '\0');
    std::iota(everyByte.begin(), everyByte.end(), '\1');
    texts.push_back(everyByte);
    std::mt19937 random(20240229); // NOLINT: the same texts every time
    std::string_view const letters = "  \r\n\t]]>><&;#x3a\"'\x01\x7F\xC3\xA9";
    for (int i = 0; i < 400; ++i) {
        std::string& text = texts.emplace_back(random() % 24, '\0');
        std::generate(text.begin(), text.end(), [&] { return letters[random() % letters.size()]; });
    }
    return texts;
}

TEST_F(XMLFileIOTinyXml, KeepsEveryByteOfTextsAttributesAndStrings) {
    auto const texts = AwkwardTexts();
    RoundTrip(
        [&](VXMLFile& file) {
            for (auto const& text : texts) {
                EXPECT_TRUE(file.OpenFirstChildElement("T") && file.WriteAttribute("a", text.c_str()));
                EXPECT_TRUE(file.OpenFirstChildText() && file.WriteText(text.c_str()) && file.CloseChild());
                EXPECT_TRUE(file.CloseChild() && file.WriteObject(nullptr, VString(text.c_str())));
            }
        },
        [&](VXMLFile& file) {
            bool first = true;
            for (auto const& text : texts) {
                char const* read = nullptr;
                VString string;
                ASSERT_TRUE(file.OpenChildElement("T", first) && file.ReadAttribute("a", read) &&
                            read == text);
                bool const hasText = file.OpenFirstChildText();
                EXPECT_EQ(hasText, !text.empty());
                EXPECT_TRUE(!hasText || (file.ReadText(read) && read == text && file.CloseChild())) << text;
                ASSERT_TRUE(file.OpenChildElement("VString", first) && string.SerializeAsXML(file));
                EXPECT_EQ(string.CString(), text);
            }
        });
}

TEST_F(XMLFileIOTinyXml, KeepsTextsBesideOtherNodes) {
    std::string const texts[] = {"one", "two & \xE9\x01", "   ", " \n "};
    RoundTrip(
        [&](VXMLFile& file) {
            file.OpenChildren();
            for (auto const& text : texts) {
                EXPECT_TRUE(file.OpenNextSiblingText() && file.WriteText(text.c_str()));
            }
            EXPECT_TRUE(file.OpenNextSiblingElement("E") && file.CloseChildren());
        },
        [&](VXMLFile& file) {
            file.OpenChildren();
            for (auto const& text : texts) {
                char const* read = nullptr;
                EXPECT_TRUE(file.OpenNextSiblingText() && file.ReadText(read) && read == text);
            }
        });
}

TEST_F(XMLFileIOTinyXml, WritesReferencesWhereCDataCannotStand) {
    auto const write = [](VXMLFile& file) {
        EXPECT_TRUE(file.OpenFirstChildText() && file.WriteText("a]]>b\r"));
        EXPECT_TRUE(file.CloseChild() && file.OpenFirstChildElement("E"));
        EXPECT_TRUE(file.OpenFirstChildText() && file.WriteText("<]]>"));
    };
    EXPECT_EQ(Saved(write), "<R>a]]&gt;b&#x0D;<E>&lt;]]&gt;</E></R>");
    VXMLFile file;
    ASSERT_TRUE(file.OpenFileForWrite(Path("f").c_str(), "R"));
    write(file);
    ASSERT_TRUE(file.CloseFile() && file.OpenFileForRead(Path("f").c_str(), "R"));
    char const* text = nullptr;
    EXPECT_TRUE(file.OpenFirstChildText() && file.ReadText(text));
    EXPECT_STREQ(text, "a]]>b\r\n    ") << "with the indentation of the next element";
}

TEST_F(XMLFileIOTinyXml, ReadsWhatOthersWrote) {
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
        {"<R><T>\xEF\xBB\xBF</T></R>", "\xEF\xBB\xBF"},
        {"<R><T><![CDATA[a]]>\n <![CDATA[b]]> </T></R>", "ab"},
    };
    for (auto const& [document, text] : cases) {
        Document file(document);
        VString read;
        EXPECT_TRUE(file.OpenFirstChildElement("T") && read.SerializeAsXML(file) && read == text) << document;
    }
    std::ofstream(Path("lines")) << "<R>\r\n<T>a\r\nb\rc&#13;</T></R>";
    VXMLFile file;
    VString read;
    EXPECT_TRUE(file.OpenFileForRead(Path("lines").c_str(), "r") && file.OpenFirstChildElement("T"));
    EXPECT_TRUE(read.SerializeAsXML(file) && read == "a\nb\nc\r") << "line ends of files become line feeds";
}

TEST_F(XMLFileIOTinyXml, RefusesWhatIsNotOneWellFormedDocument) {
    VXMLFile file;
    std::istringstream documents(Contents(PERSISTENCE_TEST_DATA "/malformed.txt")); // one a line
    int count = 0;
    for (std::string text; std::getline(documents, text); ++count) {
        EXPECT_FALSE(Load(file, text) || file.IsValid()) << text;
    }
    EXPECT_FALSE(Load(file, std::string("<R>\0</R>", 8)));
    EXPECT_FALSE(count < 50 || file.LoadFile("", nullptr, 10, "R"));
    EXPECT_TRUE(Load(file, std::string("<R/>\0\0", 6))) << "a terminator that was counted";
}

TEST_F(XMLFileIOTinyXml, BoundsWhatItReads) {
    auto const nested = [](int levels, bool isClosed = true) {
        std::string text;
        for (int i = 0; i < (isClosed ? 2 * levels : levels); ++i) {
            text += i < levels ? "<R>" : "</R>";
        }
        return text;
    };
    auto const withAttributes = [](int count) {
        std::string text = "<R";
        for (int i = 0; i < count; ++i) {
            text += " a" + std::to_string(i) + "=''";
        }
        return text + "/>";
    };
    VXMLFile file;
    EXPECT_TRUE(Load(file, nested(IXMLFileIO::kMaxNesting)));
    EXPECT_TRUE(Load(file, withAttributes(IXMLFileIO::kMaxAttributes)));
    for (int const tooMany : {IXMLFileIO::kMaxNesting + 1, IXMLFileIO::kMaxAttributes + 1, 100000}) {
        EXPECT_FALSE(Load(file, nested(tooMany)) || Load(file, nested(tooMany, false)));
        EXPECT_FALSE(Load(file, withAttributes(tooMany)));
    }
    unsigned char const byte = '<';
    EXPECT_FALSE(file.LoadFile("", &byte, IXMLFileIO::kMaxTextSize + 1, "R"));
}

TEST_F(XMLFileIOTinyXml, ReadsRegularFilesOnly) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(Path("file"), Path("link"));
    std::ofstream(Path("huge"));
    std::filesystem::resize_file(Path("huge"), IXMLFileIO::kMaxTextSize + 1); // a hole, no disk space
    VXMLFile file;
    for (char const* const name : {"pipe", "link", "huge", ".", "/dev/zero"}) {
        EXPECT_FALSE(file.OpenFileForRead((m_folder / name).c_str(), "R")) << name;
    }
    EXPECT_FALSE(file.OpenFileForRead(nullptr, "R"));
    std::ofstream(Path("file")) << "<R/>";
    EXPECT_TRUE(file.OpenFileForRead(Path("link").c_str(), "R"));
}

} // namespace
