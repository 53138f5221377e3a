#include "foundation/strings/values/VColour.h"

#include "tests/support/FailingAllocator.h"
#include "tests/support/SavedForms.h"
#include "tests/support/Stress.h"

#include <string>
#include <vector>

namespace {

using namespace VFoundation;

class VColourTest : public testing_support::SavedForms {
  protected:
    VColourTest() {
        VColour::TheClass();
        VColour::UninitializeClass();
        VColour::InitializeClass();
        VColour::InitAllNamedColours();
    }
    ~VColourTest() override { VColour::UninitializeClass(); }

    static std::string Text(SColour const& colour) { return colour.GetColourAsString(0).CString(); }
};

TEST_F(VColourTest, ClampsAndKeepsSixteenBitCopies) {
    SColour const colour(300, -4, 128, 255);
    EXPECT_EQ(Text(colour), "255, 0, 128, 255");
    EXPECT_EQ(colour.red16, 65280);
    EXPECT_EQ(colour.green16, 0);
    EXPECT_EQ(colour.blue16, 32768);
    EXPECT_STREQ(SColour(0xFF102030UL).GetColourAsString(1).CString(), "[r:48 g:32 b:16 a:255]");
    EXPECT_STREQ(colour.GetColourAsString(2).CString(), "");
}

TEST_F(VColourTest, IsReadFromText) {
    char const* const unchanged = "9, 8, 7, 6";
    char const* const cases[][2] = {
        {"10, 20, 30", "10, 20, 30, 255"}, {"[r:1 g:2 b:3 a:4]", "1, 2, 3, 4"},
        {"1,2,3,4,5", "1, 2, 3, 4"},       {"-5,x,99999999999999999999,", "5, 0, 255, 255"},
        {"1 2 3 ", "1, 2, 3, 255"},        {"dark grey", "64, 64, 64, 255"},
        {"TRANSPARENT", "0, 0, 0, 0"},     {"1 2", unchanged},
        {"LightGrey", unchanged},          {"", unchanged}};
    for (auto const& [text, expected] : cases) {
        SColour colour(9, 8, 7, 6);
        colour.SetColourFromString(text);
        EXPECT_EQ(Text(colour), expected) << text;
    }
    SColour colour(1, 2, 3, 4);
    colour.SetColourFromString("White");
    EXPECT_EQ(colour.red16, 0x100) << "a name leaves the copies";
    EXPECT_EQ(Text(colour), "255, 255, 255, 255");
}

/// When every token measured the whole text, this took minutes.
TEST_F(VColourTest, IsReadFromLongTextInLinearTime) {
    SColour colour(9, 8, 7, 6);
    colour.SetColourFromString(VString(std::string(4'000'000, ',').c_str()));
    EXPECT_EQ(Text(colour), "0, 0, 0, 0");
}

TEST_F(VColourTest, HasNamedColoursInTheirOrder) {
    auto const& named = *VColour::ms_namedColoursArray;
    ASSERT_EQ(named.Count(), 35);
    EXPECT_EQ(named.ObjectAtIndexTyped(0), VColour::Aqua());
    EXPECT_EQ(named.ObjectAtIndexTyped(34), VColour::CarrawayViolet());
    EXPECT_EQ(VColour::GetColourNamed("LIGHT GREY"), VColour::LightGrey());
    EXPECT_EQ(VColour::GetColourNamed("LightGrey"), nullptr);
    EXPECT_EQ(VColour::GetColourNamed(nullptr), nullptr);
    for (int const number : {-1, 35, INT32_MAX}) {
        EXPECT_EQ(VColour::Named(static_cast<VColour::eNamed>(number)), nullptr);
    }
    EXPECT_EQ(Text(*VColour::LightBlue()) + " " + Text(*VColour::Orange()),
              "128, 128, 255, 255 255, 128, 0, 255");
    EXPECT_TRUE(VColour::Cyan()->IsEqual(*VColour::Aqua())) << "names do not count";
    auto const unnamed = VObjectRef<VColour>::Adopt(new VColour(1, 2, 3, 4, ""));
    VColour::ms_namedColoursArray->InsertObjectAtIndex(unnamed.Get(), 0);
    VColour::ms_namedColoursArray->InsertObjectAtIndex(nullptr, 0); // the array is public
    EXPECT_EQ(VColour::GetColourNamed(""), nullptr) << "an empty name is none";
    EXPECT_EQ(VColour::GetColourNamed("aqua"), VColour::Aqua());
}

TEST_F(VColourTest, MakesNamedColoursAgainAfterAnEnd) {
    VObjectRef<VColour> const kept(VColour::Gold());
    VColour::UninitializeClass();
    VColour::UninitializeClass();
    EXPECT_EQ(kept->RetainCount(), 1);
    EXPECT_NE(VColour::Gold(), kept.Get());
    EXPECT_EQ(VColour::GetColourNamed("gold"), nullptr) << "there is no array";
    VColour::InitializeClass();
    VColour const* const red = VColour::Red();
    EXPECT_EQ(VColour::GetColourNamed("red"), red);
}

TEST_F(VColourTest, EntersEveryNamedColourOrThrows) {
    testing_support::FailEachAllocation([] {
        VColour::UninitializeClass();
        VColour::InitializeClass();
        for (int i = 0; i < 20; ++i) {
            VColour::ms_namedColoursArray->AddObject(nullptr); // so that the array has to grow
        }
        VColour::InitAllNamedColours();
        EXPECT_EQ(VColour::ms_namedColoursArray->Count(), 55);
        for (char const* const name : {"Aqua", "Gold", "Yellow", "Carraway Violet"}) {
            EXPECT_NE(VColour::GetColourNamed(name), nullptr) << name;
        }
    });
}

TEST_F(VColourTest, GivesTheSameNamedColoursToEveryThread) {
    VColour::ReleaseAllStaticColours();
    VColour::InitializeClass();
    std::vector<VColour*> seen(4);
    testing_support::OnThreads(4, [&seen](int thread) {
        VColour::InitAllNamedColours();
        seen[static_cast<std::size_t>(thread)] = VColour::GetColourNamed("slate");
    });
    EXPECT_EQ(seen, std::vector<VColour*>(4, VColour::Slate()));
    EXPECT_EQ(VColour::ms_namedColoursArray->Count(), 35);
}

TEST_F(VColourTest, TravelsThroughXMLAndCopy) {
    VColour const written(1, 2, 3, 4, "mine");
    EXPECT_EQ(XMLOf(written), R"(<VColour colour="[r:1 g:2 b:3 a:4]" />)");
    VColour read;
    EXPECT_FALSE(ReadXML(read, "<VColour/>"));
    char const* const steps[][2] = {{R"(<VColour colour="[r:1 g:2 b:3 a:4]" />)", "1, 2, 3, 4"},
                                    {"<VColour red='300' alpha='-1'/>", "255, 2, 3, 0"},
                                    {"<VColour green='7' blue='8'/>", "255, 7, 8, 0"},
                                    {"<VColour red='7' colour='navy'/>", "0, 0, 128, 255"}};
    for (auto const& [element, expected] : steps) {
        EXPECT_TRUE(ReadXML(read, element));
        EXPECT_EQ(Text(read), expected);
    }
    EXPECT_STREQ(read.GetName(), "") << "a name is not saved";
    auto const copy = VObjectRef<VColour>::Adopt(written.Copy());
    EXPECT_TRUE(copy->IsEqual(written));
    EXPECT_STREQ(copy->GetName(), "mine");
}

} // namespace
