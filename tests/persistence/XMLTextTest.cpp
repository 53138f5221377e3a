#include "foundation/persistence/IXMLFileIO.h"
#include "tests/persistence/XMLTestSupport.h"

#include <random>
#include <sys/stat.h>

namespace {

using namespace testing_support;

/// A string with every byte that a C string can hold.
std::string EveryByte() {
    std::string bytes;
    for (int c = 1; c < 256; ++c) {
        bytes += static_cast<char>(c);
    }
    return bytes;
}

std::vector<std::string> AwkwardTexts() {
    std::vector<std::string> texts = {
        "",
        "a",
        "tencharact",
        "elevenchars",
        "  leading, trailing and    repeated blanks  ",
        "line\nfeeds\r\nand\rreturns \n",
        R"(quotes " ' and <&> with &amp; &#x41; &#65; &#x<b;)",
        "a CDATA end ]]> and ]]]]>> within",
        std::string(11, ' '),
        std::string(11, '\r'),
        " \r\n\t\v\f \r\n\t\v\f ",
        "\xEF\xBB\xBF begins like a byte order mark",
        "Latin-1 \xE9\xE8 and UTF-8 \xC3\xA9\xE2\x82\xAC and broken \xE2\x82",
        EveryByte(),
        std::string(100000, 'x'),
    };
    std::mt19937 random(20240229); // NOLINT: the same texts every time
    std::string_view const letters = "  \r\n\t]]>><&;#x3a\"'\x01\x7F\xC3\xA9";
    for (int i = 0; i < 400; ++i) {
        std::string text(random() % 24, '\0');
        for (char& c : text) {
            c = letters[random() % letters.size()];
        }
        texts.push_back(text);
    }
    return texts;
}

TEST_F(XML, KeepsEveryByteOfTextsAttributesAndStrings) {
    auto const texts = AwkwardTexts();
    RoundTrip(
        [&](VXMLFile& file) {
            for (auto const& text : texts) {
                file.OpenFirstChildElement("T");
                EXPECT_TRUE(file.WriteAttribute("a", text.c_str()));
                EXPECT_TRUE(file.OpenFirstChildText() && file.WriteText(text.c_str()) && file.CloseChild());
                EXPECT_TRUE(file.CloseChild() && file.WriteObject(nullptr, VString(text.c_str())));
            }
        },
        [&](VXMLFile& file) {
            bool first = true;
            for (auto const& text : texts) {
                char const* read = nullptr;
                VString string;
                ASSERT_TRUE(file.OpenChildElement(nullptr, first));
                EXPECT_TRUE(file.ReadAttribute("a", read) && read == text) << testing::PrintToString(text);
                if (file.OpenFirstChildText()) {
                    EXPECT_TRUE(file.ReadText(read) && read == text) << testing::PrintToString(text);
                    EXPECT_TRUE(file.CloseChild());
                } else {
                    EXPECT_EQ(text, "");
                }
                ASSERT_TRUE(file.OpenChildElement(nullptr, first));
                string.SerializeAsXML(file);
                EXPECT_EQ(string.CString(), text);
            }
        });
}

TEST_F(XML, KeepsTextsBesideOtherNodes) {
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
                EXPECT_TRUE(file.OpenNextSiblingText() && file.ReadText(read));
                EXPECT_EQ(read, text);
            }
            EXPECT_TRUE(file.OpenNextSiblingElement("E"));
        });
}

TEST_F(XML, ReadsWhatOthersWrote) {
    struct {
        char const* document;
        char const* text;
    } const cases[] = {
        {"\xEF\xBB\xBF<?xml version='1.0'?>\n<R><T>\xC3\xA9&#xE9;&#8364;</T></R>\n",
         "\xC3\xA9\xC3\xA9\xE2\x82\xAC"},
        {"<?xml version=\"1.0\" encoding='utf-8' ?><R><T>&#xE9;</T></R>", "\xC3\xA9"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><R><T>\xE9&#xE9;</T></R>", "\xE9\xE9"},
        {"<?xml version='1.0' encoding='UTF-8'?><R><T>\xE9&#xE9;</T></R>", "\xE9\xE9"}, // not true
        {"<R><T>\xC3\xA9&#xE9;</T></R>", "\xC3\xA9\xE9"},
        {"<R><T>&#xE9;&#x20AC;</T></R>", "\xC3\xA9\xE2\x82\xAC"},
        {"<!DOCTYPE R SYSTEM \"r.dtd\"><?xml-stylesheet href='s'?><!-- <R> --><R><T >a</T ></R><?e?>", "a"},
        {"<R><T>a<![CDATA[<b>&amp;]]]]><![CDATA[>]]><!-- - -->c</T></R>", "a<b>&amp;]]>c"},
        {"<R><T>\n  <![CDATA[x]]>\n</T></R>", "x"},
        {"<R><T> &#32;\n&#x0d;</T></R>", "  \n\r"},
        {"<R>\r\n<T>a\r\nb\rc</T></R>", "a\r\nb\rc"},
    };
    for (auto const& test : cases) {
        VXMLFile file;
        VString read;
        ASSERT_TRUE(Load(file, test.document)) << test.document;
        EXPECT_TRUE(file.OpenFirstChildElement("T") && read.SerializeAsXML(file));
        EXPECT_STREQ(read.CString(), test.text) << test.document;
    }
    std::ofstream(Path("lines")) << "<R>\r\n<T>a\r\nb\rc&#13;</T></R>";
    VXMLFile file;
    VString read;
    EXPECT_TRUE(file.OpenFileForRead(Path("lines").c_str(), "r") && file.OpenFirstChildElement("T"));
    EXPECT_TRUE(read.SerializeAsXML(file));
    EXPECT_STREQ(read.CString(), "a\nb\nc\r") << "line ends of files become line feeds";
}

TEST_F(XML, RefusesWhatIsNotOneWellFormedDocument) {
    for (std::string const text : {
             "",
             " ",
             "\xEF\xBB\xBF",
             "x",
             "<R",
             "<R>",
             "<R></R",
             "<R></r>",
             "</R>",
             "<R></R></R>",
             "<R/><R/>",
             "<R/>x",
             "x<R/>",
             "<R a/>",
             "<R a=1/>",
             "<R a='1/>",
             "<R a='1'b='2'/>",
             "<R a='1' a='2'/>",
             "<R a='<'/>",
             "<R a='&'/>",
             "<R 1='1'/>",
             "<R/ >",
             "< R/>",
             "<1/>",
             "<R>&</R>",
             "<R>& &amp;</R>",
             "<R>&foo;</R>",
             "<R>&amp</R>",
             "<R>&#;</R>",
             "<R>&#x;</R>",
             "<R>&#0;</R>",
             "<R>&#xD800;</R>",
             "<R>&#x110000;</R>",
             "<R>&#99999999999999999999;</R>",
             "<R>&#1a;</R>",
             "<R><!-- </R>",
             "<R><!--></R>",
             "<R><![CDATA[ </R>",
             "<![CDATA[x]]><R/>",
             "<R><?a></R>",
             "<R><?a b>?></R>",
             "<R><?xml version='1.0'?></R>",
             "<!-- --><?xml version='1.0'?><R/>",
             "<?xml version?><R/>",
             "<?xml-s version?><R/>",
             "<?xml version='1.0'encoding='x'?><R/>",
             "<!DOCTYPE R [<!ENTITY a 'b'>]><R/>",
             "<R><!DOCTYPE R></R>",
             "<!ELEMENT R><R/>",
             "<?xml version='1.0' encoding='ISO-8859-1'?><R>&#x20AC;</R>",
             "<R>&#x20AC;\xE9</R>",
             "<R><a\x7F/></R>",
         }) {
        VXMLFile file;
        EXPECT_FALSE(Load(file, text)) << text;
        EXPECT_FALSE(file.IsValid()) << text;
    }
    VXMLFile file;
    EXPECT_FALSE(Load(file, std::string("<R>\0</R>", 8)));
    EXPECT_FALSE(Load(file, "<R/>", "Other"));
    EXPECT_FALSE(file.LoadFile("", nullptr, 10, "R"));
    EXPECT_TRUE(Load(file, std::string("<R/>\0\0", 6))) << "a terminator that was counted";
}

TEST_F(XML, BoundsWhatItReads) {
    auto const repeated = [](char const* text, int count) {
        std::string result;
        while (count-- > 0) {
            result += text;
        }
        return result;
    };
    auto const nested = [&](int levels) { return repeated("<R>", levels) + repeated("</R>", levels); };
    auto const withAttributes = [](int count) {
        std::string text = "<R";
        for (int i = 0; i < count; ++i) {
            text += " a" + std::to_string(i) + "=''";
        }
        return text + "/>";
    };
    VXMLFile file;
    EXPECT_TRUE(Load(file, nested(IXMLFileIO::kMaxNesting)));
    EXPECT_FALSE(Load(file, nested(IXMLFileIO::kMaxNesting + 1)));
    EXPECT_FALSE(Load(file, nested(100000)));
    EXPECT_FALSE(Load(file, repeated("<R>", 100000)));
    EXPECT_TRUE(Load(file, withAttributes(IXMLFileIO::kMaxAttributes)));
    EXPECT_FALSE(Load(file, withAttributes(IXMLFileIO::kMaxAttributes + 1)));
    EXPECT_FALSE(Load(file, withAttributes(100000)));
    unsigned char const byte = '<';
    EXPECT_FALSE(file.LoadFile("", &byte, IXMLFileIO::kMaxTextSize + 1, "R"));
}

TEST_F(XML, ReadsRegularFilesOnly) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(Path("file"), Path("link"));
    std::ofstream(Path("huge"));
    std::filesystem::resize_file(Path("huge"), IXMLFileIO::kMaxTextSize + 1); // a hole, no disk space
    VXMLFile file;
    for (char const* const name : {"pipe", "link", "huge", ".", ""}) {
        EXPECT_FALSE(file.OpenFileForRead(Path(name).c_str(), "R")) << name;
    }
    EXPECT_FALSE(file.OpenFileForRead("/dev/zero", "R") || file.OpenFileForRead(nullptr, "R"));
    std::ofstream(Path("file")) << "<R/>";
    EXPECT_TRUE(file.OpenFileForRead(Path("link").c_str(), "R"));
}

} // namespace
