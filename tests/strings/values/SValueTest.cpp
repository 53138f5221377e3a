#include "foundation/strings/values/SValue.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

TEST(SValue, OtherGettersGiveNothing) {
    SValue value;
    value.SetValueToDouble(-1.5);
    EXPECT_EQ(value.GetVoidPointer(), nullptr) << "no bits of the double";
    value.SetValueToInt(0x1'8000'0000L);
    EXPECT_EQ(value.GetInt(), INT_MIN) << "32 bits";
    EXPECT_FALSE(value.GetBool());
    value.SetValueToChar('\x80');
    EXPECT_EQ(value.GetInt(), 0);
    value.SetValueToVoidPointer(&value);
    EXPECT_EQ(value.GetVoidPointer(), &value);
    VString text("old");
    EXPECT_FALSE(value.GetString(text));
    EXPECT_TRUE(text.IsEmpty());
    value.SetValueToString("text"); // no string is read out of the pointer's bits
    EXPECT_EQ(value.GetObject(), nullptr);
}

TEST(SValue, HoldsOneReference) {
    ACounted object;
    ACounted other;
    {
        SValue value;
        value.SetValueToObject(&object);
        value.SetValueToObject(&object);
        EXPECT_EQ(object.RetainCount(), 2);
        SValue copy(value);
        copy = static_cast<SValue const&>(copy);
        EXPECT_EQ(object.RetainCount(), 3);
        EXPECT_TRUE(copy == value);
        copy.SetValueToBool(true);
        value.SetValueToObject(&other);
        EXPECT_EQ(object.RetainCount(), 1);
        EXPECT_EQ(other.RetainCount(), 2);
        EXPECT_FALSE(value == copy);
    }
    EXPECT_EQ(other.RetainCount(), 1);
}

TEST(SValue, TakesTextAndObjectsOutOfWhatItHolds) {
    SValue value;
    value.SetValueToObject(VObjectRef<VString>::Adopt(VString::NewString("inner")).Get());
    value.SetValueToString(static_cast<VString const&>(*value.GetObject())); // its only owner lets go of it
    VString text;
    EXPECT_TRUE(value.GetString(text));
    EXPECT_STREQ(text.CString(), "inner");

    auto array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    array->AddObject(VObjectRef<ACounted>::Adopt(ACounted::New()).Get());
    VObject* const inner = array->ObjectAtIndex(0);
    value.SetValueToObject(array.Get());
    array = {};
    value.SetValueToObject(inner);
    ASSERT_EQ(ACounted::ms_alive, 1);
    EXPECT_EQ(inner->RetainCount(), 1);
}

/// Puts a string into a value while the value lets go of it.
class AComeback : public ACounted {
  public:
    explicit AComeback(SValue& value) : m_value(value) {}
    ~AComeback() override { m_value.SetValueToString("from the destructor"); }

  private:
    SValue& m_value;
};

TEST(SValue, MayBeSetByTheObjectThatItLetsGo) {
    SValue value;
    value.SetValueToObject(VObjectRef<VObject>::Adopt(new AComeback(value)).Get());
    value.SetValueToInt(5);
    VString text;
    EXPECT_TRUE(value.GetString(text)) << "the last to set it";
    EXPECT_STREQ(text.CString(), "from the destructor");
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST(SValue, ComparesByContent) {
    SValue values[6];
    values[1].SetValueToString("same");
    values[2].SetValueToString("other");
    values[3].SetValueToFloat(NAN);
    values[4].SetValueToInt(1);
    values[5].SetValueToBool(true);
    for (SValue const& a : values) {
        for (SValue const& b : values) {
            EXPECT_EQ(a == SValue(b), &a == &b && &a != &values[3]);
        }
    }
}

} // namespace
