#pragma once

#include <stdexcept>

#include <unistd.h>

namespace exifcard {

/// For as long as it lives, a superuser's process has the rights of nobody, so that what is forbidden is
/// forbidden for it as well. The rights of anybody else stay as they are.
class ReducedRights {
public:
    ReducedRights() { take(_user == 0 ? kNobody : _user); }
    ~ReducedRights() { static_cast<void>(setresuid(_user, _user, _user)); }
    ReducedRights(const ReducedRights&) = delete;
    ReducedRights& operator=(const ReducedRights&) = delete;

private:
    static constexpr uid_t kNobody = 65534;

    /// The saved user stays, to come back to.
    void take(uid_t user) {
        if (setresuid(user, user, _user) != 0) {
            throw std::runtime_error("the rights cannot be reduced");
        }
    }

    uid_t _user = geteuid();
};

} // namespace exifcard
