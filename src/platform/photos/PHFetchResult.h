#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace exifcard {

/// What a fetch found: an ordered list that stays as it was at the fetch, filled
/// as far as it is asked for. It keeps numbers only; objects are loaded in pages
/// and dropped again. Usable from any thread; a call may block on the disk.
template<class Object>
class PHFetchResult {
public:
    using ObjectPtr = std::shared_ptr<const Object>;

    virtual ~PHFetchResult() = default;
    PHFetchResult(const PHFetchResult&) = delete;
    PHFetchResult& operator=(const PHFetchResult&) = delete;

    virtual std::size_t count() const = 0;
    /// The count, but no further than `most`: finds out whether there is a next page without looking at the
    /// rest.
    virtual std::size_t countUpTo(std::size_t most) const = 0;
    /// Null for an object that has left the library altogether since.
    /// @throws PlatformException "NSRangeException" beyond the end.
    virtual ObjectPtr objectAtIndex(std::size_t index) const = 0;
    /// A page: `length` objects from `location` on, loaded together. Looks at nothing behind them.
    /// @throws PlatformException "NSRangeException" where the range goes beyond the end.
    virtual std::vector<ObjectPtr> objectsInRange(std::size_t location, std::size_t length) const = 0;
    /// Found by the identifier.
    virtual std::optional<std::size_t> indexOfObject(const Object& object) const = 0;

    bool containsObject(const Object& object) const { return indexOfObject(object).has_value(); }
    /// Null for an empty result.
    ObjectPtr firstObject() const { return countUpTo(1) == 0 ? nullptr : objectAtIndex(0); }
    ObjectPtr lastObject() const { return count() == 0 ? nullptr : objectAtIndex(count() - 1); }

protected:
    PHFetchResult() = default;
};

} // namespace exifcard
