#include "platform/messages/ConversationStore.h"
#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include <sys/resource.h>

namespace exifcard {
namespace {

using testing::HasSubstr;

namespace fs = std::filesystem;

const MSMessage kMessage;
const EncodedPicture kPicture = {.jpeg = Data::fromText("picture"), .width = 3, .height = 2};

std::string databaseFile() {
    return dataFolder() + "/conversations.sqlite";
}

void executeInDatabase(const std::string& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(databaseFile().c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}

std::string bytesOf(const std::string& path) {
    return std::string(Data::mappedFile(path).value_or(Data()).text());
}

/// A process without any right over files of others; the superuser has to give his up.
bool dropRights() {
    constexpr uid_t kNobody = 65534;
    return geteuid() != 0 || setuid(kNobody) == 0;
}

class ConversationStoreFaultTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(_store.insertMessage("Ada", kMessage, kPicture), std::nullopt);
        ASSERT_EQ(_store.sendPending("Ada"), std::nullopt);
    }

    TemporaryHome _home;
    ConversationStore _store;
};

TEST_F(ConversationStoreFaultTest, LeavesADatabaseThatItCannotUseAsItIs) {
    struct Case {
        const char* name;
        std::function<void()> damage;
        const char* cause;
    };
    const Case cases[] = {
        {"no database", [] { std::ofstream(databaseFile()) << std::string(4096, 'x'); }, "no database"},
        {"cut short", [] { fs::resize_file(databaseFile(), 6000); }, "damaged"},
        {"a page of noise",
            [] {
                std::fstream file(databaseFile(), std::ios::in | std::ios::out);
                file.seekp(4096) << std::string(fs::file_size(databaseFile()) - 4096, '\xa5');
            },
            "damaged"},
        {"a later version", [] { executeInDatabase("PRAGMA user_version = 7"); }, "newer version"},
        {"a version below none", [] { executeInDatabase("PRAGMA user_version = -1"); }, "newer version"},
        {"a view in place of a table",
            [] {
                executeInDatabase("ALTER TABLE entries RENAME TO t; CREATE VIEW entries AS SELECT * FROM t");
            },
            "prohibited"},
        {"another program's tables",
            [] { executeInDatabase("DROP TABLE entries; DROP TABLE conversations"); }, "no such table"},
    };
    const std::string whole = bytesOf(databaseFile());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::ofstream(databaseFile()) << whole;
        c.damage();
        const std::string damaged = bytesOf(databaseFile());
        const auto refusal = _store.insertText("Ada", "text");
        const auto content = _store.content("Ada");
        EXPECT_THAT(refusal.value_or(""), testing::AllOf(HasSubstr(databaseFile()), HasSubstr(c.cause)));
        EXPECT_THAT(
            content.error.value_or(""), testing::AllOf(HasSubstr(databaseFile()), HasSubstr(c.cause)));
        EXPECT_EQ(bytesOf(databaseFile()), damaged);
    }
}

TEST_F(ConversationStoreFaultTest, StaysInItsFolderWhicheverByteIsDamaged) {
    std::string bytes = bytesOf(databaseFile());
    std::size_t readable = 0;
    for (std::size_t position = 0; position < bytes.size(); position += bytes[position] == 0 ? 101 : 7) {
        SCOPED_TRACE(position);
        bytes[position] = static_cast<char>(~bytes[position]);
        std::ofstream(databaseFile()) << bytes;
        bytes[position] = static_cast<char>(~bytes[position]);
        const auto content = _store.content("Ada");
        EXPECT_TRUE(content.error || content.entries.size() <= 1);
        for (const ConversationEntry& entry : content.entries) {
            readable += entry.picture ? 1 : 0;
            EXPECT_EQ(
                fs::path(entry.picture ? entry.picture->file : dataFolder() + "/pictures/-").parent_path(),
                dataFolder() + "/pictures");
        }
    }
    EXPECT_GT(readable, 0U);
}

TEST_F(ConversationStoreFaultTest, TellsWhatItMayNotOpenOrWrite) {
    const auto isRefused = [this](const char* cause) {
        return ChildProcess([this, cause] {
            return dropRights() &&
                   _store.insertText("Ada", "text").value_or("").find(cause) != std::string::npos;
        }).succeeded();
    };
    // Whoever has no rights of his own must still get to the files.
    fs::permissions(_home.path(), fs::perms(0755));
    fs::permissions(_home.path() / "data", fs::perms(0755));
    fs::permissions(dataFolder(), fs::perms(0555));
    fs::permissions(databaseFile(), fs::perms(0444));
    EXPECT_TRUE(isRefused("check the rights"));
    fs::permissions(databaseFile(), fs::perms(0));
    EXPECT_TRUE(isRefused("Permission denied"));
    fs::permissions(dataFolder(), fs::perms(0));
    EXPECT_TRUE(isRefused("Permission denied"));
    fs::permissions(dataFolder(), fs::perms(0700));
    fs::permissions(databaseFile(), fs::perms(0600));
    EXPECT_EQ(_store.content("Ada").entries.size(), 1U);
}

TEST_F(ConversationStoreFaultTest, ChangesNothingWhenAPictureOrTheDatabaseHasNoRoom) {
    ASSERT_EQ(_store.insertText("Ada", "text"), std::nullopt);
    const EncodedPicture large = {.jpeg = Data::fromText(std::string(1 << 20, 'p')), .width = 1, .height = 1};
    const auto failsOnAFullDisk = [this](const std::function<std::optional<std::string>()>& change) {
        return ChildProcess([&] {
            const rlimit limit = {100'000, 100'000};
            signal(SIGXFSZ, SIG_IGN);
            return setrlimit(RLIMIT_FSIZE, &limit) == 0 && change().has_value();
        }).succeeded();
    };
    EXPECT_TRUE(failsOnAFullDisk([&] { return _store.insertMessage("Ada", kMessage, large); }));
    EXPECT_TRUE(failsOnAFullDisk([&] { return _store.insertText("Ada", std::string(300'000, 't')); }));
    fs::remove_all(dataFolder() + "/pictures");
    std::ofstream(dataFolder() + "/pictures") << "a file in its place";
    EXPECT_THAT(_store.insertMessage("Ada", kMessage, kPicture).value_or(""), HasSubstr("pictures/"));
    const auto content = _store.content("Ada");
    ASSERT_EQ(content.error, std::nullopt);
    ASSERT_EQ(content.entries.size(), 2U);
    EXPECT_EQ(content.entries[1].text, "text");
}

TEST_F(ConversationStoreFaultTest, TellsAFolderThatCannotBe) {
    fs::remove_all(dataFolder());
    std::ofstream(dataFolder()) << "a file in its place";
    EXPECT_THAT(_store.insertText("Ada", "text").value_or(""), HasSubstr(dataFolder()));
    fs::remove(dataFolder());
    fs::create_directories(databaseFile());
    EXPECT_THAT(_store.insertText("Ada", "text").value_or(""), HasSubstr(databaseFile()));
    EXPECT_THAT(_store.content("Ada").error.value_or(""), HasSubstr(databaseFile()));
}

} // namespace
} // namespace exifcard
