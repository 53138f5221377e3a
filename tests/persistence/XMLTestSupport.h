#pragma once

#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VDictionaryPair.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOPugiXmlFactory.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"
#include "tests/support/LineLog.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

namespace testing_support {

using namespace VFoundation;

/// A process in which XML works, with a folder of its own and a log that can be read.
class XMLTest : public testing::Test {
  protected:
    explicit XMLTest(IXMLFileIOFactory* factory = new VXMLFileIOTinyXmlFactory) {
        VXMLFile::SetIXMLFileIOFactory(factory);
        for (VClass* (*const theClass)() :
             {&VString::TheClass, &VObjectArray::TheClass, &VDictionary::TheClass, &VDictionaryPair::TheClass,
              &VXMLFile::TheClass}) {
            theClass();
        }
    }
    ~XMLTest() override { VXMLFile::ClearIXMLFileIOFactory(); }

    std::string Path(char const* name) const { return (m_folder / name).string(); }
    /// The number of files in the folder.
    long Entries() const { return std::distance(std::filesystem::directory_iterator(m_folder), {}); }

    static bool Load(VXMLFile& file, std::string const& text, char const* root = "R") {
        return file.LoadFile("", reinterpret_cast<unsigned char const*>(text.data()), text.size(), root);
    }

    /// A document that is open at its root.
    struct Document : VXMLFile {
        explicit Document(std::string const& text, char const* root = "R") {
            EXPECT_TRUE(Load(*this, text, root)) << text;
        }
    };

    /// The text of a document in which `write` fills the root; "(refused)" when it could not be written.
    template <class Write>
    static std::string Saved(Write write) {
        VString text;
        VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "R"));
        write(file);
        return file.CloseFile() ? text.CString() : "(refused)";
    }

    /// What was logged since the last call.
    std::string Log() {
        auto const lines = (*m_log)->Lines();
        m_log.emplace();
        return std::accumulate(lines.begin(), lines.end(), std::string());
    }

    std::optional<LineLogScope> m_log{std::in_place};
    ScratchFile const m_scratch;
    std::filesystem::path const m_folder = m_scratch.Folder();
};

using MakeBackEnds = IXMLFileIOFactory* (*)();

/// The same on each back end.
class XMLBackEndTest : public XMLTest, public testing::WithParamInterface<MakeBackEnds> {
  protected:
    XMLBackEndTest() : XMLTest(GetParam()()) {}
};

template <class Factory>
IXMLFileIOFactory* Make() {
    return new Factory;
}

inline auto BackEnds() {
    std::vector<MakeBackEnds> all{&Make<VXMLFileIOTinyXmlFactory>};
    if (VXMLFileIOPugiXmlFactory::IsAvailable()) {
        all.push_back(&Make<VXMLFileIOPugiXmlFactory>);
    }
    return testing::ValuesIn(all);
}

inline std::string NameOf(testing::TestParamInfo<MakeBackEnds> const& info) {
    return info.index == 0 ? "TinyXml" : "PugiXml";
}

} // namespace testing_support

/// Runs the tests of an XMLBackEndTest suite on every back end.
#define ON_EACH_BACK_END(Suite) INSTANTIATE_TEST_SUITE_P(, Suite, BackEnds(), NameOf)
