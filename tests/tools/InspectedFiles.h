#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace inspected {

inline std::string ReadFile(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Every golden file and every input of the fuzz targets, in the same order each time.
inline std::vector<std::filesystem::path> AllFiles() {
    std::vector<std::filesystem::path> files;
    for (char const* const folder : {SOURCE_FOLDER "/tests/data", SOURCE_FOLDER "/fuzz/corpus"}) {
        for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file() && entry.path().extension() != ".bgra") {
                files.push_back(entry.path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// `whole`, and copies of it that are cut or have one other byte.
inline std::vector<std::string> WithDamage(std::string const& whole, std::size_t most) {
    std::vector<std::string> all{whole};
    for (std::size_t length = 0; length < whole.size(); length += 1 + whole.size() / most) {
        all.push_back(whole.substr(0, length));
    }
    std::minstd_rand random(static_cast<unsigned>(whole.size()) + 1);
    for (std::size_t i = 0; i < most && !whole.empty(); ++i) {
        std::string changed = whole;
        changed[random() % changed.size()] = static_cast<char>(random());
        all.push_back(changed);
    }
    return all;
}

} // namespace inspected
