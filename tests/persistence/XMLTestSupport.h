#pragma once

#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VDictionaryPair.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"
#include "tests/support/LineLog.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace testing_support {

using namespace VFoundation;

/// A process in which XML works, with a folder of its own and a log that can be read.
class XMLTest : public testing::Test {
  protected:
    XMLTest() {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
        for (VClass* (*const theClass)() :
             {&VString::TheClass, &VObjectArray::TheClass, &VDictionary::TheClass, &VDictionaryPair::TheClass,
              &VXMLFile::TheClass}) {
            theClass();
        }
        std::string name = (std::filesystem::temp_directory_path() / "vfoundation-XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr);
        m_folder = name;
    }
    ~XMLTest() override {
        std::filesystem::remove_all(m_folder);
        VXMLFile::ClearIXMLFileIOFactory();
    }

    std::string Path(char const* name) const { return (m_folder / name).string(); }
    /// The number of files in the folder.
    long Entries() const { return std::distance(std::filesystem::directory_iterator(m_folder), {}); }

    static std::string Contents(std::string const& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

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
        std::string text;
        for (auto const& line : (*m_log)->Lines()) {
            text += line;
        }
        m_log.emplace();
        return text;
    }

    std::optional<LineLogScope> m_log{std::in_place};
    std::filesystem::path m_folder;
};

} // namespace testing_support
