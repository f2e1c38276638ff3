#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace exifcard {
namespace {

/// One user for the whole program: American, in universal time, with settings of their own.
class UserEnvironment : public testing::Environment {
public:
    void SetUp() override {
        setenv("LC_ALL", "en_US.UTF-8", 1);
        setenv("TZ", "UTC", 1);
        unsetenv("LANGUAGE");
        _home.emplace();
    }

    void TearDown() override { _home.reset(); }

private:
    std::optional<TemporaryHome> _home;
};

// The test framework owns it.
const testing::Environment* const kEnvironment =
    testing::AddGlobalTestEnvironment(std::make_unique<UserEnvironment>().release());

} // namespace
} // namespace exifcard
