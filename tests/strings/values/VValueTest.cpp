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
    int pointee = 0;
    struct {
        char const* element;
        std::function<void(SValue&)> set;
    } const rows[] = {
        {R"(<VValue type="unknown" />)", [](SValue&) {}},
        {R"(<VValue type="bool" value="true" />)", [](SValue& v) { v.SetValueToBool(true); }},
        {R"(<VValue type="char" value="-128" />)", [](SValue& v) { v.SetValueToChar('\x80'); }},
        {R"(<VValue type="int" value="-2147483648" />)", [](SValue& v) { v.SetValueToInt(INT32_MIN); }},
        {R"(<VValue type="float" value="-0.5" />)", [](SValue& v) { v.SetValueToFloat(-0.5F); }},
        {R"(<VValue type="double" value="1.25e-300" />)", [](SValue& v) { v.SetValueToDouble(1.25e-300); }},
        {R"(<VValue type="string" value=" a&#x0A;&lt;b&gt;" />)",
         [](SValue& v) { v.SetValueToString(" a\n<b>"); }},
        {R"(<VValue type="object"><VPoint name="value" x="1" y="2" /></VValue>)",
         [&](SValue& v) { v.SetValueToObject(object.Get()); }},
        {R"(<VValue type="pvoid" />)", [&](SValue& v) { v.SetValueToVoidPointer(&pointee); }},
        {R"(<VValue type="string" value="" />)", [](SValue& v) { v.SetValueToString(""); }},
        {R"(<VValue type="object" />)", [](SValue& v) { v.SetValueToObject(nullptr); }}};
    SValue before;
    before.SetValueToInt(-1);
    for (auto const& [element, set] : rows) {
        SCOPED_TRACE(element);
        VValue value;
        set(value.Value());
        std::int32_t const type = value.Value().Type();
        EXPECT_EQ(XMLOf(value), element);
        VValue read(before);
        ReadXML(read, element);
        EXPECT_EQ(read.Value().Type(), type);
        EXPECT_EQ(read.IsEqual(value), type != SValue::kPVoid);
        auto const copy = VObjectRef<VObject>::Adopt(value.Copy());
        EXPECT_TRUE(copy->IsEqual(value));

        SaveChunk(value);
        VValue loaded(before);
        EXPECT_TRUE(ReadChunk(loaded));
        EXPECT_EQ(m_file.ChunkRemaining(), 0U);
        EXPECT_EQ(loaded.Value().Type(), type);
        EXPECT_EQ(loaded.IsEqual(value),
                  type < SValue::kString || element == std::string("<VValue type=\"object\" />"));
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
