#include "foundation/strings/values/VValue.h"

#include "foundation/strings/values/VPoint.h"
#include "tests/support/Counted.h"
#include "tests/support/SavedForms.h"

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using VValueTest = testing_support::SavedForms;

TEST_F(VValueTest, TravelsByType) {
    auto const object = VObjectRef<VPoint>::Adopt(new VPoint(SPoint{1, 2}));
    int const pointee = 0;
    SValue values[11];
    values[1].SetValueToBool(true);
    values[2].SetValueToChar('\x80');
    values[3].SetValueToInt(INT32_MIN);
    values[4].SetValueToFloat(-0.5F);
    values[5].SetValueToDouble(1.25e-300);
    values[6].SetValueToString(" a\n<b>");
    values[7].SetValueToObject(object.Get());
    values[8].SetValueToVoidPointer(const_cast<int*>(&pointee));
    values[9].SetValueToString("");
    values[10].SetValueToObject(nullptr);
    char const* const elements[11] = {R"(<VValue type="unknown" />)",
                                      R"(<VValue type="bool" value="true" />)",
                                      R"(<VValue type="char" value="-128" />)",
                                      R"(<VValue type="int" value="-2147483648" />)",
                                      R"(<VValue type="float" value="-0.5" />)",
                                      R"(<VValue type="double" value="1.25e-300" />)",
                                      R"(<VValue type="string" value=" a&#x0A;&lt;b&gt;" />)",
                                      R"(<VValue type="object"><VPoint name="value" x="1" y="2" /></VValue>)",
                                      R"(<VValue type="pvoid" />)",
                                      R"(<VValue type="string" value="" />)",
                                      R"(<VValue type="object" />)"};
    SValue before;
    before.SetValueToInt(-1);
    for (int i = 0; i < 11; ++i) {
        SCOPED_TRACE(elements[i]);
        VValue value(values[i]);
        std::int32_t const type = values[i].Type();
        EXPECT_EQ(XMLOf(value), elements[i]);
        VValue read(before);
        ReadXML(read, elements[i]);
        EXPECT_EQ(read.Value().Type(), type);
        EXPECT_EQ(read.IsEqual(value), type != SValue::kPVoid);
        auto const copy = VObjectRef<VObject>::Adopt(value.Copy());
        EXPECT_TRUE(copy->IsEqual(value));

        SaveChunk(value);
        VValue loaded(before);
        EXPECT_TRUE(ReadChunk(loaded));
        EXPECT_EQ(m_file.ChunkRemaining(), 0U);
        EXPECT_EQ(loaded.Value().Type(), type);
        EXPECT_EQ(loaded.IsEqual(value), type < SValue::kString || i == 10);
        EXPECT_EQ(loaded.Value().GetVoidPointer(), nullptr) << "no bits of the number before";
    }
}

TEST_F(VValueTest, SurvivesDamagedFiles) {
    VValue number;
    number.Value().SetValueToInt(77);
    VValue value(number);
    EXPECT_FALSE(ReadXML(value, "<VValue type='int'/>"));
    EXPECT_EQ(value.Value().GetInt(), 77) << "a missing value leaves the payload";
    EXPECT_FALSE(ReadXML(value, "<VValue type='double'/>"));
    EXPECT_EQ(value.Value().GetDouble(), 0) << "but not that of another type";
    for (char const* const type : {"long", "Int", "int ", ""}) {
        ReadXML(value, "<VValue value='5' type='" + std::string(type) + "'/>");
        EXPECT_EQ(value.Value().Type(), SValue::kUnknown) << type;
    }
    EXPECT_TRUE(ReadXML(value, "<VValue type='char' value='321'/>"));
    EXPECT_EQ(value.Value().GetChar(), 'A');

    std::string log;
    auto const object = VObjectRef<ACounted>::Adopt(new ACounted);
    object->LogTo(&log);
    value.Value().SetValueToObject(object.Get());
    ReadXML(value, "<VValue type='string' value='x'/>");
    EXPECT_EQ(log, "+-") << "what was held is released";
    value.Value().SetValueToObject(object.Get());
    SaveChunk(number);
    EXPECT_TRUE(ReadChunk(value));
    EXPECT_EQ(value.Value().GetInt(), 77);
    EXPECT_EQ(log, "+-+") << "a chunked file releases nothing";
    object->Release();

    value.Value().SetValueToString("text");
    VValue const text(value);
    SaveChunk(value);
    EXPECT_TRUE(ReadChunk(value));
    EXPECT_TRUE(value.IsEqual(text)) << "a string keeps its text";
    m_file.Seek(0, VFile::kFromStart);
    m_file.CloseChunk();
    number.Serialize(m_file);
    EXPECT_EQ(number.Value().Type(), SValue::kUnknown) << "a value stands inside a chunk";
}

} // namespace
