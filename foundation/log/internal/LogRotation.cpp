#include "foundation/log/internal/LogRotation.h"

#include "foundation/host/internal/LocalTime.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

namespace VFoundation {

namespace {

constexpr int kMostKept = 1000;

std::string Numbered(char const* path, int number) {
    return std::string(path) + '.' + std::to_string(number);
}

} // namespace

void LogRotation::Begin(long long size) noexcept {
    m_nextSize = size + m_rotation.bytes;
    std::tm day{};
    std::time_t const now = std::time(nullptr);
    if (LocalTime(now, day)) {
        day.tm_hour = day.tm_min = day.tm_sec = 0;
        ++day.tm_mday;
        day.tm_isdst = -1;
        m_nextDay = std::mktime(&day);
    }
    if (m_nextDay <= now) {
        m_nextDay = now + 24L * 60 * 60;
    }
}

bool LogRotation::PutAside(char const* path) const {
    std::error_code error;
    if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(path, error))) {
        return false;
    }
    for (int number = std::clamp(m_rotation.kept, 1, kMostKept) - 1; number > 0; --number) {
        std::filesystem::rename(Numbered(path, number), Numbered(path, number + 1), error); // if there is one
    }
    std::filesystem::rename(path, Numbered(path, 1), error);
    return !error;
}

void LogRotation::TakeBack(char const* path) const {
    std::error_code error;
    std::filesystem::rename(Numbered(path, 1), path, error);
}

} // namespace VFoundation
