#pragma once

#include "platform/photos/PHError.h"
#include "platform/sqlite/SQLiteDatabase.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace exifcard {

/// What the change requests of one change block ask for, in their order.
class ChangeBlock {
public:
    /// Makes one change, which is numbered `change`; an error undoes all of the block.
    using Step = std::function<std::optional<PHError>(SQLiteDatabase& database, std::int64_t change)>;

    /// The block that runs on this thread.
    /// @throws PlatformException outside a change block.
    static ChangeBlock& current();

    /// Runs `block` with the requests that it makes gathered here.
    void gather(const std::function<void()>& block);

    void add(Step step) { _steps.push_back(std::move(step)); }
    const std::vector<Step>& steps() const { return _steps; }

private:
    std::vector<Step> _steps;
};

} // namespace exifcard
