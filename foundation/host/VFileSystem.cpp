#include "foundation/host/VFileSystem.h"

#include "foundation/host/internal/HostServices.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <utility>

namespace VFoundation {

namespace {

namespace fs = std::filesystem;
using Result = VFileSystem::Result;

Result Failed(char const* verb, std::string const& path, std::error_code error) {
    return Result("cannot " + (verb + (" " + path)), error);
}

/// Another name each time.
std::string TemporaryName() {
    static std::atomic<unsigned long> s_number{0}; // relaxed: each gets another number
    return ".vfoundation-" + std::to_string(HostServices::ProcessNumber()) + "-" +
           std::to_string(s_number.fetch_add(1, std::memory_order_relaxed)) + ".tmp";
}

/// Removes what an operation did not complete.
class Unfinished {
  public:
    explicit Unfinished(fs::path path) : m_path(std::move(path)) {}
    Unfinished(Unfinished const&) = delete;
    Unfinished& operator=(Unfinished const&) = delete;
    ~Unfinished() {
        std::error_code ignored;
        if (!m_path.empty()) {
            fs::remove_all(m_path, ignored);
        }
    }
    fs::path const& Path() const noexcept { return m_path; }
    void Keep() noexcept { m_path.clear(); }

  private:
    fs::path m_path;
};

/// True when a folder at `to` would lie in the folder `from`.
bool IsWithin(fs::path const& to, fs::path const& from, std::error_code& error) {
    fs::path const folder = fs::canonical(from, error);
    fs::path const parent = error ? fs::path() : fs::weakly_canonical(to, error).parent_path();
    return !error &&
           std::mismatch(folder.begin(), folder.end(), parent.begin(), parent.end()).first == folder.end();
}

std::error_code CopyTo(fs::path const& from, fs::path const& to) {
    std::error_code error;
    auto const type = fs::symlink_status(from, error).type();
    if (type == fs::file_type::not_found) {
        return std::make_error_code(std::errc::no_such_file_or_directory);
    }
    bool const isCopied =
        type == fs::file_type::regular || type == fs::file_type::symlink || type == fs::file_type::directory;
    if (!error && !isCopied) {
        return std::make_error_code(std::errc::not_supported);
    }
    if (!error) {
        fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    }
    return error;
}

/// What may not be replaced: a pipe, a socket or a device.
std::error_code Replaceable(std::string const& path) {
    std::error_code error;
    auto const status = fs::symlink_status(path, error);
    return fs::is_other(status) ? std::make_error_code(std::errc::not_supported) : std::error_code();
}

} // namespace

VFileSystem::Result::Result(std::string operation, std::error_code error)
    : m_operation(std::move(operation)), m_error(error) {
}

VString VFileSystem::Result::ErrorDescription() const {
    return m_error ? VString((m_operation + ": " + m_error.message()).c_str()) : VString();
}

VFileSystem::Result VFileSystem::MakeFolder(std::string const& path) {
    std::error_code error;
    fs::create_directories(path, error);
    return error ? Failed("make folder", path, error) : Result();
}

VFileSystem::Result VFileSystem::Copy(std::string const& from, std::string const& to, Existing existing) {
    std::error_code error;
    if (existing == Existing::kKeep && fs::symlink_status(to, error).type() != fs::file_type::not_found) {
        return Failed("copy to", to, std::make_error_code(std::errc::file_exists));
    }
    if (error = Replaceable(to); error) {
        return Failed("replace", to, error);
    }
    if (fs::is_directory(from, error) && !fs::is_symlink(from, error) && IsWithin(to, from, error)) {
        return Failed("copy a folder into itself:", to, std::make_error_code(std::errc::invalid_argument));
    }
    Unfinished copy(fs::path(to).parent_path() / TemporaryName());
    error = CopyTo(from, copy.Path());
    if (error) {
        return Failed("copy", from + " to " + to, error);
    }
    error = HostServices::Rename(copy.Path().c_str(), to.c_str(), existing == Existing::kReplace);
    if (error) {
        return Failed("copy to", to, error);
    }
    copy.Keep();
    return {};
}

VFileSystem::Result VFileSystem::Move(std::string const& from, std::string const& to, Existing existing) {
    std::error_code error = existing == Existing::kReplace ? Replaceable(to) : std::error_code();
    if (error) {
        return Failed("replace", to, error);
    }
    error = HostServices::Rename(from.c_str(), to.c_str(), existing == Existing::kReplace);
    if (error != std::errc::cross_device_link) {
        return error ? Failed("move", from + " to " + to, error) : Result();
    }
    Result copied = Copy(from, to, existing);
    return copied ? RemoveAll(from) : copied;
}

VFileSystem::Result VFileSystem::Remove(std::string const& path) {
    std::error_code error;
    fs::remove(path, error);
    return error ? Failed("remove", path, error) : Result();
}

VFileSystem::Result VFileSystem::RemoveAll(std::string const& path) {
    std::error_code error;
    std::string const folder =
        path.substr(0, path.find_last_not_of('/') + 1); // a '/' at the end follows a link
    std::string const name = folder.substr(folder.rfind('/') + 1);
    if (name.empty() || name == "." || name == "..") {
        error = std::make_error_code(std::errc::invalid_argument);
    } else {
        fs::remove_all(folder, error);
    }
    return error ? Failed("remove", path, error) : Result();
}

} // namespace VFoundation
