#pragma once

#include "platform/foundation/Dictionary.h"
#include "platform/foundation/Value.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// Posted on the default centre, with the defaults object as sender, when this
/// program or another one changed a value.
inline constexpr std::string_view kUserDefaultsDidChangeNotification = "NSUserDefaultsDidChangeNotification";

/// A named store of preferences, kept as a property-list file that several
/// programs share. Two objects of one name see the same values at once.
///
/// A write takes a lock, reads the file, changes one key and renames a synced
/// temporary file, so that programs never lose each other's keys and a kill at
/// any moment leaves the old or the new file. Storing an equal value writes
/// nothing. A file that is no property list is kept aside under another name
/// before a new one is written; a file that cannot be written is read, logged
/// once and kept in memory. Thread-safe.
class UserDefaults : public std::enable_shared_from_this<UserDefaults> {
public:
    /// The program's own store, one for both programs.
    static std::shared_ptr<UserDefaults> standardUserDefaults();
    /// The shared store of that name, which makes part of a file's; an empty one is the standard store.
    static std::shared_ptr<UserDefaults> initWithSuiteName(std::string_view name);

    ~UserDefaults();
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

    /// The stored value, or nothing. Containers are answered as copies. Never waits for the disk.
    Value objectForKey(std::string_view key) const;
    /// Stores a property-list value; storing nothing removes the key. What is too
    /// long for the file is logged and not stored.
    void setObjectForKey(const Value& value, std::string_view key);
    void removeObjectForKey(std::string_view key);
    std::vector<std::string> allKeys() const;
    /// Reads what other programs wrote meanwhile. Not needed inside one program.
    /// @return False while something could not be written.
    bool synchronize();

    /// Where the store lies.
    const std::string& path() const;

    /// Begins to tell changes that other programs make, through
    /// `kUserDefaultsDidChangeNotification` on a background thread; until then
    /// they are seen at `synchronize` and at the next write. Costs a thread.
    void watchForOutsideChanges();

private:
    class Implementation;
    explicit UserDefaults(std::unique_ptr<Implementation> implementation);

    void tellChange();

    std::unique_ptr<Implementation> _implementation;
};

} // namespace exifcard
