#pragma once

#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <string>

namespace testing_support {

/// A test in which objects go through both file forms.
class SavedForms : public testing::Test {
  protected:
    SavedForms() { VFoundation::VXMLFile::SetIXMLFileIOFactory(new VFoundation::VXMLFileIOTinyXmlFactory); }
    ~SavedForms() override { VFoundation::VXMLFile::ClearIXMLFileIOFactory(); }

    /// The document <R> with the object in it.
    static std::string XMLOf(VFoundation::VObject const& object) {
        VFoundation::VString text;
        VFoundation::VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "R"));
        EXPECT_TRUE(file.WriteObject(nullptr, object));
        EXPECT_TRUE(file.CloseFile());
        return text.CString();
    }
    /// Lets the object read itself from the element that stands in <R>.
    static void ReadXML(VFoundation::VObject& object, std::string const& element) {
        std::string const text = element.starts_with("<R") ? element : "<R>" + element + "</R>";
        VFoundation::VXMLFile file;
        ASSERT_TRUE(file.LoadFile("", reinterpret_cast<unsigned char const*>(text.data()), text.size(), "R"));
        EXPECT_TRUE(file.ReadObject(nullptr, object)) << text;
    }

    /// Opens a chunk in which the object wrote itself.
    void OpenSaved(VFoundation::VObject& object, long flags = 0) {
        using VFoundation::VAIFile;
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite | flags));
        m_file.OpenChunk("OBJT");
        m_file << object;
        m_file.CloseChunk();
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe | flags));
        m_file.ReadChunkHeader(nullptr, nullptr);
    }

    /// Expects that `blank`, which differs, becomes equal to `object` by XML and by each kind of chunked file.
    template <class T>
    void ExpectRoundTrips(T& object, T const& blank) {
        EXPECT_FALSE(object.IsEqual(blank));
        T read(blank);
        ReadXML(read, XMLOf(object));
        EXPECT_TRUE(read.IsEqual(object)) << XMLOf(read);
        for (long const flags : {0L, VFoundation::VAIFile::kLittleEndian}) {
            OpenSaved(object, flags);
            T loaded(blank);
            EXPECT_TRUE(loaded.Serialize(m_file));
            EXPECT_TRUE(loaded.IsEqual(object));
            EXPECT_EQ(m_file.ChunkRemaining(), 0U);
        }
        VFoundation::VObject* const copy = object.Copy();
        EXPECT_TRUE(copy->IsEqual(object));
        copy->Release();
    }

    ScratchFile const m_scratch;
    VFoundation::VAIFile m_file;
};

} // namespace testing_support
