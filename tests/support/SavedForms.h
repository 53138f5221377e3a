#pragma once

#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

namespace testing_support {

using namespace VFoundation;

/// A test in which objects go through both file forms.
class SavedForms : public testing::Test {
  protected:
    SavedForms() { VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory); }
    ~SavedForms() override { VXMLFile::ClearIXMLFileIOFactory(); }

    /// The object's element, in the document <R>.
    static std::string XMLOf(VObject const& object) {
        VString text;
        VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "R") && file.WriteObject(nullptr, object) &&
                    file.CloseFile());
        return text.CString();
    }
    /// Lets the object read itself from such a document.
    static void ReadXML(VObject& object, std::string const& text) {
        VXMLFile file;
        EXPECT_TRUE(
            file.LoadFile("", reinterpret_cast<unsigned char const*>(text.data()), text.size(), "R") &&
            file.ReadObject(nullptr, object))
            << text;
    }
    /// Lets the object write itself into a chunk, and opens that.
    void OpenSaved(VObject& object) {
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite) && m_file.OpenChunk("OBJT"));
        m_file << object;
        ASSERT_TRUE(m_file.CloseChunk() &&
                    m_file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe));
        m_file.ReadChunkHeader(nullptr, nullptr);
    }

    /// Expects that `blank`, which differs, becomes equal to `written` through both forms.
    template <class T>
    void ExpectRoundTrips(T written, T const& blank) {
        EXPECT_FALSE(written.IsEqual(blank));
        T read(blank);
        ReadXML(read, XMLOf(written));
        EXPECT_TRUE(read.IsEqual(written)) << XMLOf(read);
        OpenSaved(written);
        T loaded(blank);
        EXPECT_TRUE(loaded.Serialize(m_file) && loaded.IsEqual(written) && m_file.ChunkRemaining() == 0);
        VObject* const copy = written.Copy();
        EXPECT_TRUE(copy->IsEqual(written));
        copy->Release();
    }

    ScratchFile const m_scratch;
    VAIFile m_file;
};

} // namespace testing_support
