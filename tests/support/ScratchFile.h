#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace testing_support {

inline std::string BytesOf(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The path of a file in a folder of its own, removed with the object. The file exists once it is written.
class ScratchFile {
  public:
    ScratchFile() {
        std::string name = (std::filesystem::temp_directory_path() / "vfoundation-XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr);
        m_folder = name;
        m_path = (m_folder / "scratch").string();
    }
    ScratchFile(ScratchFile const&) = delete;
    ScratchFile& operator=(ScratchFile const&) = delete;
    ~ScratchFile() { std::filesystem::remove_all(m_folder); }

    char const* Path() const { return m_path.c_str(); }
    std::filesystem::path const& Folder() const { return m_folder; }

    std::string Bytes() const { return BytesOf(m_path); }
    void SetBytes(std::string const& bytes) const {
        std::filesystem::remove(m_path); // some file systems sync a file that is written over
        std::ofstream(m_path, std::ios::binary) << bytes;
    }

  private:
    std::filesystem::path m_folder;
    std::string m_path;
};

} // namespace testing_support
