#pragma once

#include "platform/foundation/Value.h"
#include "settings/ExifKey.h"

#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace exifcard {

class UserDefaults;

/// Tells which keys are fields of this program. From then on the visible entries leave out all others, which
/// a newer program or an edited file brings; the stored lists keep them. Set before the first list is read.
void setFieldTest(bool (*isField)(std::string_view key));

/// A fresh list of visible entries with these keys.
ExifKeys visibleKeysNamed(std::span<const char* const> keys);

/// The entries of `defaults` whose key occurs nowhere in the keys of `stored`,
/// in default order; an entry that is no `ExifKey` counts as missing.
ExifKeys missingKeys(const ExifKeys& stored, const ExifKeys& defaults);

/// The list that a store of preferences holds, or nothing where it holds none.
/// Data that cannot be read is logged and gives a list without entries; visible entries that
/// are no fields are logged.
std::optional<ExifKeys> unarchivedKeys(const Value& stored);

/// A field-order list that is kept in the shared suite, with the subset of its
/// visible entries. Thread-safe; what is answered is not changed later.
class FieldList {
public:
    /// @param key  Under which the suite keeps the list; a literal.
    explicit FieldList(std::string_view key) : _key(key) {}

    std::string_view key() const { return _key; }
    std::shared_ptr<const ExifKeys> keys() const;
    /// The fields that are not hidden, as they were when the list was stored.
    std::shared_ptr<const ExifKeys> visibleKeys() const;

    /// Takes the list that the suite holds; one that cannot be read becomes a list without entries there,
    /// too.
    /// @return Whether it holds one.
    bool load(const UserDefaults& suite);
    /// Takes the list, writes it to the suite and finds its visible entries.
    void store(ExifKeys keys);
    /// Stores the list once more with what newer defaults add at its end, where
    /// it has fewer entries than they.
    void appendMissing(const ExifKeys& defaults);
    /// Takes the list that the suite holds now, if any, and writes nothing.
    void reload();

private:
    void take(ExifKeys keys);

    std::string_view _key;
    mutable std::mutex _mutex;
    std::shared_ptr<const ExifKeys> _keys = std::make_shared<ExifKeys>(); // Guarded by _mutex.
    mutable std::shared_ptr<const ExifKeys> _visibleKeys;                 // Guarded by _mutex.
};

} // namespace exifcard
