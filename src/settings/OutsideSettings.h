#pragma once

#include <memory>

namespace exifcard {

/// Tells this program of settings that another one changed: posts for each, on the main queue, what its
/// setter would have posted, and takes field lists anew, so that nothing old overwrites them.
///
/// Main queue.
class OutsideSettings {
public:
    /// Remembers what is stored now.
    OutsideSettings();
    ~OutsideSettings();
    OutsideSettings(const OutsideSettings&) = delete;
    OutsideSettings& operator=(const OutsideSettings&) = delete;

    /// Begins to follow, with what has changed since. Costs a thread.
    void follow();

private:
    class Follower;
    std::shared_ptr<Follower> _follower;
};

} // namespace exifcard
