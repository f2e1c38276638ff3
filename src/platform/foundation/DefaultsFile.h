#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/PropertyList.h"
#include "platform/foundation/Value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace exifcard {

/// The property-list file behind a store of preferences, which several programs
/// read and change at once.
class DefaultsFile {
public:
    /// Tells one state of the file from another; all zeros when it is missing.
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t file = 0;
        std::int64_t size = 0;
        std::int64_t changedInNanoseconds = 0;

        bool operator==(const Identity&) const = default;
    };

    /// What the file held at one moment.
    struct Snapshot {
        Identity identity;
        Data bytes;                ///< Empty when it is missing or unreadable.
        DictionaryPtr values;      ///< Never null; not to be changed.
        bool isUnreadable = false; ///< It is there and holds no dictionary.
    };
    using SnapshotPtr = std::shared_ptr<const Snapshot>;

    explicit DefaultsFile(std::string path) : _path(std::move(path)) {}

    const std::string& path() const { return _path; }
    Identity identity() const;
    /// A file that has not changed since it was last read is not read again.
    SnapshotPtr read() const;

    /// Changes some entries of the file as it is now, under a lock among all
    /// programs. Entries that have their value already write nothing; an
    /// unreadable file is kept aside first.
    /// @return What the file holds now; null when it could not be written.
    SnapshotPtr change(const std::vector<propertylist::Change>& changes) const;

private:
    SnapshotPtr readAnew(const Identity& identity) const;
    bool keepAside() const;

    std::string _path;
};

} // namespace exifcard
