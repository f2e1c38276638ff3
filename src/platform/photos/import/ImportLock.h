#pragma once

#include "platform/foundation/FileDescriptor.h"

#include <functional>
#include <optional>
#include <string>

namespace exifcard {

/// Held by the one import that writes into a catalogue. The system lets go of it when the program ends,
/// however that happens.
class ImportLock {
public:
    /// Waits for another import; blocks.
    /// @param folder  Of the catalogue; it is made where it is missing.
    /// @param onWait  Called once before it has to wait.
    /// @return Nothing where the folder cannot be written.
    static std::optional<ImportLock> take(const std::string& folder, const std::function<void()>& onWait);

private:
    explicit ImportLock(FileDescriptor file) : _file(std::move(file)) {}

    FileDescriptor _file;
};

} // namespace exifcard
