#pragma once

#include "tests/support/ScratchFile.h"

#include <fstream>
#include <string>

namespace host_test {

/// A folder of the test's own, gone with the object.
struct TestFolder {
    std::string Path(char const* name) const { return (m_scratch.Folder() / name).string(); }
    std::string Write(char const* name, std::string const& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }
    testing_support::ScratchFile const m_scratch;
};

} // namespace host_test
