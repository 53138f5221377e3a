#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

#include <string>

namespace testing_support {

using namespace VFoundation;

/// A test in which objects go through both file forms.
class SavedForms : public testing::Test {
  protected:
    SavedForms() { VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory); }
    ~SavedForms() override { VXMLFile::ClearIXMLFileIOFactory(); }

    /// The object's element.
    static std::string XMLOf(VObject const& object) {
        VString text;
        VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "R"));
        EXPECT_TRUE(file.WriteObject(nullptr, object));
        EXPECT_TRUE(file.CloseFile());
        std::string const document = text.CString(); // <R>...</R>
        return document.size() < 7 ? document : document.substr(3, document.size() - 7);
    }
    /// Lets the object read itself from such an element; returns what it says to that.
    static bool ReadXML(VObject& object, std::string const& element) {
        VXMLFile file;
        std::string const text = "<R>" + element + "</R>";
        EXPECT_TRUE(file.LoadFile("", reinterpret_cast<unsigned char const*>(text.data()), text.size(), "R"));
        EXPECT_TRUE(file.OpenFirstChildElement(object.ClassName())) << text;
        return object.SerializeAsXML(file);
    }
    /// Lets the object write itself into a chunk.
    void SaveChunk(VObject& object, long mode = 0) {
        EXPECT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite | mode));
        EXPECT_TRUE(m_file.OpenChunk("OBJT"));
        EXPECT_TRUE(object.Serialize(m_file));
        EXPECT_TRUE(m_file.CloseChunk());
        EXPECT_TRUE(m_file.Close());
    }
    /// Opens the first chunk of the file.
    void OpenChunk(long mode = VAIFile::kChunkSafe) {
        EXPECT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead | mode));
        EXPECT_TRUE(m_file.ReadChunkHeader(nullptr, nullptr));
    }
    bool ReadChunk(VObject& object, long mode = VAIFile::kChunkSafe) {
        OpenChunk(mode);
        return object.Serialize(m_file);
    }

    /// Expects this element of `written`, and that `blank`, which differs, becomes equal to it through a copy and
    /// through both forms.
    void ExpectRoundTrips(VObject const& written, VObject const& blank, std::string const& element) {
        SCOPED_TRACE(element);
        EXPECT_FALSE(written.IsEqual(blank));
        EXPECT_EQ(XMLOf(written), element);
        auto const read = VObjectRef<VObject>::Adopt(blank.Copy());
        EXPECT_TRUE(ReadXML(*read, element));
        EXPECT_TRUE(read->IsEqual(written)) << XMLOf(*read);
        auto const copy = VObjectRef<VObject>::Adopt(written.Copy());
        EXPECT_TRUE(copy->IsEqual(written)) << XMLOf(*copy);
        for (long const mode : {0L, VAIFile::kLittleEndian, VAIFile::kChunkSafe}) {
            SaveChunk(*copy, mode);
            auto const loaded = VObjectRef<VObject>::Adopt(blank.Copy());
            EXPECT_TRUE(ReadChunk(*loaded, mode)) << mode;
            EXPECT_TRUE(loaded->IsEqual(written)) << mode << XMLOf(*loaded);
            EXPECT_EQ(m_file.GetFileRemaining(), 0U) << mode;
        }
    }

    ScratchFile const m_scratch;
    VAIFile m_file;
};

} // namespace testing_support
