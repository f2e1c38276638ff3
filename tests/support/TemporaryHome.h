#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace exifcard {

/// A home folder of its own for one test: the XDG variables point into it, and
/// it is removed with the object.
class TemporaryHome {
public:
    TemporaryHome() {
        std::string pattern = (std::filesystem::temp_directory_path() / "exifcard-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        _path = pattern;
        setenv("XDG_CONFIG_HOME", (_path / "config").c_str(), 1);
        setenv("XDG_DATA_HOME", (_path / "data").c_str(), 1);
        setenv("XDG_CACHE_HOME", (_path / "cache").c_str(), 1);
    }
    ~TemporaryHome() {
        std::error_code ignored;
        std::filesystem::remove_all(_path, ignored);
    }
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    const std::filesystem::path& path() const { return _path; }

private:
    std::filesystem::path _path;
};

} // namespace exifcard
