#pragma once

#include <utility>

#include <unistd.h>

namespace exifcard {

/// Owns an open file and closes it.
class FileDescriptor {
public:
    /// @param number  What `open` and its kin answered; negative for none.
    explicit FileDescriptor(int number = -1) : _number(number) {}
    ~FileDescriptor() {
        if (isOpen()) {
            close(_number);
        }
    }
    FileDescriptor(FileDescriptor&& other) noexcept : _number(std::exchange(other._number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(_number, other._number);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool isOpen() const { return _number >= 0; }
    int number() const { return _number; }
    /// Gives the file away: whoever calls closes it.
    int release() { return std::exchange(_number, -1); }

private:
    int _number;
};

} // namespace exifcard
