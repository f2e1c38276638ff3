#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/PropertyList.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fstream>
#include <functional>
#include <iterator>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSuite = "group.test";

class UserDefaultsTest : public testing::Test {
protected:
    ~UserDefaultsTest() override { captureLog({}); }

    std::string path() const { return _home.path() / "config/exifcard/group.test.plist"; }

    /// The stored list as another program reads it.
    Value onDisk() const {
        const auto bytes = Data::mappedFile(path());
        return bytes ? propertylist::read(*bytes).value_or(Value()) : Value();
    }

    Value onDisk(std::string_view key) const {
        const auto list = onDisk();
        return list.dictionaryView() != nullptr ? list.dictionaryView()->objectForKey(key) : Value();
    }

    void putOnDisk(std::string_view bytes) const {
        ASSERT_TRUE(makeFolder(fs::path(path()).parent_path()));
        std::ofstream(path()) << bytes;
    }

    std::vector<std::string>& capturedLines() {
        captureLog([this](std::string_view line) { _lines.emplace_back(line); });
        return _lines;
    }

private:
    TemporaryHome _home;
    std::vector<std::string> _lines;
};

/// Runs `block` as a program of its own.
pid_t inChild(const std::function<void()>& block) {
    const pid_t child = fork();
    if (child == 0) {
        block();
        _exit(0);
    }
    return child;
}

/// What a file's writer cannot leave alone when it writes.
auto traceOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return std::array{static_cast<std::int64_t>(status.st_ino), status.st_mtim.tv_sec, status.st_mtim.tv_nsec,
        status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

TEST_F(UserDefaultsTest, TwoObjectsOfOneNameSeeTheSameValuesAtOnce) {
    const auto one = UserDefaults::initWithSuiteName(kSuite);
    const auto other = UserDefaults::initWithSuiteName(kSuite);
    EXPECT_TRUE(one->objectForKey("key").isNothing());
    EXPECT_FALSE(fs::exists(path())); // Reading makes nothing.
    one->setObjectForKey(true, "key");
    EXPECT_EQ(other->objectForKey("key"), Value(true));
    EXPECT_EQ(onDisk("key"), Value(true));
    other->setObjectForKey({}, "key");
    EXPECT_TRUE(one->objectForKey("key").isNothing());
    EXPECT_EQ(onDisk(), Value(Dictionary::make()));
    EXPECT_NE(UserDefaults::standardUserDefaults()->path(), one->path());
    EXPECT_EQ(UserDefaults::initWithSuiteName(""), UserDefaults::standardUserDefaults());
}

TEST_F(UserDefaultsTest, AChangedContainerChangesNoStore) {
    const auto defaults = UserDefaults::initWithSuiteName(kSuite);
    const auto inner = Array::make({1});
    defaults->setObjectForKey(Array::make({inner}), "list");
    inner->addObject(2);
    defaults->objectForKey("list").array()->firstObject().array()->addObject(3);
    EXPECT_EQ(defaults->objectForKey("list"), Value(Array::make({Array::make({1})})));
}

TEST_F(UserDefaultsTest, AnEqualValueWritesNothing) {
    const auto defaults = UserDefaults::initWithSuiteName(kSuite);
    const Value values[] = {
        true, -3, 0.5, 0.1F, "text", "bad \xff", Data::fromText("data"), Array::make({1})};
    for (const Value& value : values) {
        SCOPED_TRACE(static_cast<int>(value.kind()));
        defaults->setObjectForKey(value, "key");
        const auto trace = traceOf(path());
        defaults->setObjectForKey(value, "key");
        defaults->removeObjectForKey("never stored");
        EXPECT_EQ(traceOf(path()), trace);
    }
    defaults->setObjectForKey(1, "key");
    const auto trace = traceOf(path());
    defaults->setObjectForKey(true, "key"); // Equal as a number, another kind.
    EXPECT_NE(traceOf(path()), trace);
}

TEST_F(UserDefaultsTest, ProgramsNeverLoseEachOthersKeys) {
    constexpr int kPrograms = 3;
    constexpr int kKeys = 40;
    for (int program = 0; program < kPrograms; ++program) {
        inChild([program] {
            const auto defaults = UserDefaults::initWithSuiteName(kSuite);
            for (int key = 0; key < kKeys; ++key) {
                defaults->setObjectForKey(key, std::to_string(program) + '-' + std::to_string(key));
            }
        });
    }
    while (wait(nullptr) > 0) {}
    EXPECT_EQ(UserDefaults::initWithSuiteName(kSuite)->allKeys().size(), std::size_t(kPrograms * kKeys));
}

TEST_F(UserDefaultsTest, AKillAtAnyMomentLeavesTheOldOrTheNewFile) {
    UserDefaults::initWithSuiteName(kSuite)->setObjectForKey(std::string(50'000, 'x'), "kept");
    constexpr int kKills = 30;
    for (int kill = 0; kill < kKills; ++kill) {
        SCOPED_TRACE(kill);
        std::array<int, 2> written = {};
        ASSERT_EQ(pipe(written.data()), 0);
        const pid_t writer = inChild([&written] {
            const auto defaults = UserDefaults::initWithSuiteName(kSuite);
            for (int count = 1;; ++count) {
                defaults->setObjectForKey(count, "count");
                [[maybe_unused]] const auto told = write(written[1], &count, sizeof(count));
            }
        });
        close(written[1]);
        int before = 0;
        for (int waited = 0; waited <= kill % 3; ++waited) {
            ASSERT_EQ(read(written[0], &before, sizeof(before)), ssize_t(sizeof(before)));
        }
        ::kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        close(written[0]);
        EXPECT_EQ(onDisk("kept").text()->size(), 50'000U);
        EXPECT_GE(onDisk("count").integerValue(), before);
    }
    UserDefaults::initWithSuiteName(kSuite)->setObjectForKey("still", "writable");
    EXPECT_EQ(onDisk("writable"), Value("still"));
    const fs::directory_iterator files(fs::path(path()).parent_path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 2); // The list and its lock.
}

TEST_F(UserDefaultsTest, AnUnreadableFileIsKeptAside) {
    const auto& lines = capturedLines();
    for (const int number : {1, 2}) {
        SCOPED_TRACE(number);
        const std::string broken = "no list " + std::to_string(number);
        putOnDisk(broken);
        const auto defaults = UserDefaults::initWithSuiteName(kSuite);
        EXPECT_TRUE(defaults->allKeys().empty());
        EXPECT_EQ(Data::mappedFile(path())->text(), broken); // Reading changes nothing.
        defaults->setObjectForKey(number, "key");
        EXPECT_EQ(onDisk("key"), Value(number));
        const std::string other = path() + ".unreadable-" + std::to_string(number);
        EXPECT_EQ(Data::mappedFile(other)->text(), broken);
    }
    EXPECT_THAT(
        lines, testing::ElementsAre(testing::HasSubstr("is no property list"), testing::HasSubstr("kept as"),
                   testing::HasSubstr("is no property list"), testing::HasSubstr("kept as")));
}

TEST_F(UserDefaultsTest, AFileThatCannotBeWrittenIsReadAndChangesAreKeptInMemory) {
    putOnDisk("<plist><dict><key>old</key><integer>1</integer></dict></plist>");
    fs::create_directory(path() + ".lock"); // Nobody can lock it, the administrator neither.
    const auto& lines = capturedLines();
    const auto defaults = UserDefaults::initWithSuiteName(kSuite);
    defaults->setObjectForKey(2, "new");
    defaults->setObjectForKey(3, "newer");
    defaults->removeObjectForKey("old");
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_EQ(defaults->allKeys(), (std::vector<std::string>{"new", "newer"}));
    EXPECT_EQ(onDisk("old"), Value(1));
    EXPECT_THAT(lines, testing::ElementsAre(testing::HasSubstr("cannot be written")));

    fs::remove(path() + ".lock");
    defaults->setObjectForKey(4, "newest");
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(onDisk(), Value(Dictionary::make({{"new", 2}, {"newer", 3}, {"newest", 4}})));
}

TEST_F(UserDefaultsTest, ALinkToTheFileStaysOne) {
    putOnDisk("<plist><dict/></plist>");
    const std::string elsewhere = fs::path(path()).parent_path().parent_path() / "elsewhere";
    fs::rename(path(), elsewhere);
    fs::create_symlink(elsewhere, path());
    UserDefaults::initWithSuiteName(kSuite)->setObjectForKey(1, "key");
    EXPECT_TRUE(fs::is_symlink(path()));
    EXPECT_EQ(onDisk("key"), Value(1));
}

TEST_F(UserDefaultsTest, AValueTooLongForTheFileIsRefused) {
    const auto& lines = capturedLines();
    const auto defaults = UserDefaults::initWithSuiteName(kSuite);
    defaults->setObjectForKey(std::string(5'000'000, 'x'), "long");
    defaults->setObjectForKey(1, "short");
    EXPECT_EQ(onDisk(), Value(Dictionary::make({{"short", 1}})));
    EXPECT_TRUE(defaults->objectForKey("long").isNothing());
    EXPECT_THAT(lines, testing::ElementsAre(testing::HasSubstr("long is too long")));
}

TEST_F(UserDefaultsTest, TellsChangesOfThisAndOfAnotherProgram) {
    const auto defaults = UserDefaults::initWithSuiteName(kSuite);
    DispatchSemaphore told(0);
    int count = 0;
    const auto observation = NotificationCenter::defaultCenter().addObserver(
        kUserDefaultsDidChangeNotification, defaults.get(), [&](const Notification&) {
            ++count;
            told.signal();
        });
    defaults->setObjectForKey(1, "key");
    defaults->setObjectForKey(1, "key");
    EXPECT_EQ(count, 1);
    told.wait();

    const auto storeElsewhere = [](int value) {
        const pid_t other =
            inChild([value] { UserDefaults::initWithSuiteName(kSuite)->setObjectForKey(value, "key"); });
        waitpid(other, nullptr, 0);
    };
    storeElsewhere(2);
    EXPECT_EQ(defaults->objectForKey("key"), Value(1)); // Not seen until it is asked for.
    defaults->synchronize();
    EXPECT_EQ(defaults->objectForKey("key"), Value(2));
    told.wait();

    defaults->watchForOutsideChanges();
    storeElsewhere(3);
    told.wait();
    EXPECT_EQ(defaults->objectForKey("key"), Value(3));
    EXPECT_EQ(count, 3);
}

} // namespace
} // namespace exifcard
