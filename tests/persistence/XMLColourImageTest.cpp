#include "foundation/image/VImage.h"
#include "foundation/strings/SColour.h"
#include "foundation/strings/VColour.h"
#include "tests/persistence/XMLTestSupport.h"

namespace {

using namespace testing_support;

TEST_F(XML, WritesColoursUnlessTheyAreTheDefault) {
    SColour const black(0, 0, 0, 255);
    SColour colour(1, 2, 3, 4);
    EXPECT_EQ(Saved([&](VXMLFile& file) {
                  EXPECT_FALSE(file.SerializeColourAttribute("a", colour, black)) << "whatever was written";
                  EXPECT_FALSE(file.SerializeColourAttribute("b", colour, colour));
              }),
              R"(<R a="[r:1 g:2 b:3 a:4]" />)");
}

TEST_F(XML, ReadsColoursFromAttributesChildrenAndDefaults) {
    VXMLFile file;
    SColour const fallback(9, 8, 7, 6);
    ASSERT_TRUE(Load(file, "<R a='[r:1 g:2 b:3 a:4]' e=''><VColour name='c' colour='5,6,7'/>"
                           "<VColour name='partial' red='300'/><VString name='s'/></R>"));
    auto const read = [&](char const* name) {
        SColour colour(50, 50, 50, 50);
        EXPECT_TRUE(file.SerializeColourAttribute(name, colour, fallback));
        EXPECT_EQ(colour.red16, colour.red << 8);
        return std::string(colour.GetColourAsString(0).CString());
    };
    EXPECT_EQ(read("a"), "1, 2, 3, 4");
    EXPECT_EQ(read("c"), "5, 6, 7, 255");
    EXPECT_EQ(read("partial"), "255, 8, 7, 6") << "nothing of the colour read before";
    for (char const* const absent : {"e", "s", "absent", static_cast<char const*>(nullptr)}) {
        EXPECT_EQ(read(absent), "9, 8, 7, 6");
    }
    EXPECT_STREQ(file.GetNodeName(), "R");
}

TEST_F(XML, NamesImagesByTheirFile) {
    std::string const picture = PERSISTENCE_TEST_DATA "/../image/saved.tga";
    VXMLFile file;
    VImage* image = nullptr;
    ASSERT_TRUE(Load(file, "<R a='" + picture + "' b='missing.tga' c=''/>"));
    EXPECT_TRUE(file.SerializeImageAttribute("a", image));
    ASSERT_NE(image, nullptr);
    image->Retain();
    VImage* const held = image;
    long const before = held->RetainCount();
    EXPECT_TRUE(file.ReadImageAttribute("b", image)) << "the attribute is there, the image is not";
    EXPECT_EQ(image, held);
    EXPECT_FALSE(file.ReadImageAttribute("c", image) || file.ReadImageAttribute("absent", image));
    EXPECT_TRUE(file.ReadImageAttribute("a", image));
    EXPECT_EQ(held->RetainCount(), image == held ? before : before - 1) << "the image before is released";
    EXPECT_EQ(Saved([&](VXMLFile& saving) {
                  EXPECT_FALSE(saving.SerializeImageAttribute("a", image)) << "whatever was written";
                  EXPECT_FALSE(saving.WriteImageAttribute("b", nullptr));
              }),
              "<R a=\"" + picture + "\" />");
    image->Release();
    held->Release();
}

} // namespace
