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

TEST(SValue, EveryKindComesBackAndOtherGettersGiveNothing) {
    SValue value;
    EXPECT_EQ(value.Type(), SValue::kUnknown);
    value.SetValueToDouble(-1.5);
    EXPECT_EQ(value.GetDouble(), -1.5);
    EXPECT_EQ(value.GetVoidPointer(), nullptr) << "no bits of the double";
    value.SetValueToInt(0x1'8000'0000L);
    EXPECT_EQ(value.GetInt(), INT_MIN) << "32 bits";
    EXPECT_FALSE(value.GetBool());
    value.SetValueToChar('\x80');
    EXPECT_EQ(value.GetChar(), '\x80');
    EXPECT_EQ(value.GetInt(), 0);
    value.SetValueToFloat(0.25F);
    EXPECT_EQ(value.GetFloat(), 0.25F);
    value.SetValueToBool(true);
    EXPECT_TRUE(value.GetBool());
    value.SetValueToVoidPointer(&value);
    EXPECT_EQ(value.GetVoidPointer(), &value);
    VString text("old");
    EXPECT_FALSE(value.GetString(text));
    EXPECT_TRUE(text.IsEmpty());
    value.SetValueToString("text"); // no string is read out of the pointer's bits
    EXPECT_TRUE(value.GetString(text));
    EXPECT_STREQ(text.CString(), "text");
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
    SValue a;
    SValue b;
    EXPECT_TRUE(a == b);
    a.SetValueToString("same");
    b.SetValueToString("same");
    EXPECT_TRUE(a == b);
    b.SetValueToString("other");
    EXPECT_FALSE(a == b);
    a.SetValueToFloat(NAN);
    EXPECT_FALSE(a == a);
    a.SetValueToInt(1);
    b.SetValueToBool(true);
    EXPECT_FALSE(a == b);
}

} // namespace
