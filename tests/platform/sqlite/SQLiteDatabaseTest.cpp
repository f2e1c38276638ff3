#include "platform/sqlite/SQLiteDatabase.h"

#include "support/ReducedRights.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

namespace exifcard {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kNotes[] = {"CREATE TABLE notes (number INTEGER PRIMARY KEY, text)"};

class SQLiteDatabaseTest : public testing::Test {
protected:
    std::string path(const std::string& name = "notes.sqlite") const { return _home.path() / name; }

    static std::vector<std::string> textsOf(SQLiteDatabase& database) {
        std::vector<std::string> texts;
        auto notes = database.query("SELECT text FROM notes ORDER BY number");
        while (notes.step()) {
            texts.push_back(notes.text(0).value_or("nothing"));
        }
        return texts;
    }
    static void add(SQLiteDatabase& database, const char* text) {
        database.execute("INSERT INTO notes (text) VALUES (?)", {text});
    }
    std::string contentOf(const std::string& file) const {
        if (fs::is_directory(file)) {
            return {};
        }
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    TemporaryHome _home;
};

TEST_F(SQLiteDatabaseTest, GivesBackEachKindOfValueAsItWasStored) {
    SQLiteDatabase database(path(), kNotes);
    struct Case {
        const char* name;
        Value value;
        const char* type;
        std::optional<std::string> text;
    };
    using namespace std::string_literals;
    const Case cases[] = {
        {"nothing", Value(), "null", std::nullopt},
        {"empty text", "", "text", ""},
        {"text with a zero", "a\0b"s, "text", "a\0b"s},
        {"text that is not UTF-8", "\xff\xfe.jpg", "text", "\xff\xfe.jpg"},
        {"text that looks like a query", "'); DROP TABLE notes; --", "text", "'); DROP TABLE notes; --"},
        {"text that looks like a number", "007", "text", "007"},
        {"least number", std::numeric_limits<std::int64_t>::min(), "integer", "-9223372036854775808"},
        {"truth", true, "integer", "1"},
        {"fraction", 0.5, "real", "0.5"},
        {"date", Date{1.5}, "real", "1.5"},
        {"bytes", Data::fromBytes({0, 'b', 0xff}), "blob", std::string("\0b\xff", 3)},
        {"no bytes", Data(), "blob", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto row = database.query("SELECT ?1, typeof(?1)", {c.value});
        ASSERT_TRUE(row.step());
        EXPECT_EQ(row.text(1), c.type);
        EXPECT_EQ(row.text(0), c.text);
        EXPECT_EQ(row.isNull(0), !c.text.has_value());
        EXPECT_FALSE(row.step());
    }
    EXPECT_EQ(database.error(), std::nullopt);
}

TEST_F(SQLiteDatabaseTest, ReadsWhatIsNoNumberAsZero) {
    SQLiteDatabase database(path(), kNotes);
    auto row = database.query("SELECT 'seven', NULL, x'01', 7.9");
    ASSERT_TRUE(row.step());
    for (int column = 0; column < 3; ++column) {
        SCOPED_TRACE(column);
        EXPECT_EQ(row.integer(column), 0);
        EXPECT_EQ(row.real(column), 0);
    }
    EXPECT_EQ(row.integer(3), 7);
}

TEST_F(SQLiteDatabaseTest, MakesItsFileForItsOwnerAlone) {
    const SQLiteDatabase database(path(), kNotes);
    for (const std::string& file : {path(), path("notes.sqlite-wal")}) {
        SCOPED_TRACE(file);
        EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    }
}

TEST_F(SQLiteDatabaseTest, BringsAnOldFileUpToDateStepByStep) {
    {
        SQLiteDatabase old(path(), kNotes);
        add(old, "kept");
    }
    constexpr const char* kLater[] = {kNotes[0], "ALTER TABLE notes ADD COLUMN colour DEFAULT 'red'",
        "UPDATE notes SET text = text || ' ' || colour"};
    for (int opening = 0; opening < 2; ++opening) { // What was done is not done again.
        SQLiteDatabase database(path(), kLater);
        EXPECT_EQ(textsOf(database), std::vector<std::string>{"kept red"});
        EXPECT_EQ(database.error(), std::nullopt);
    }
}

TEST_F(SQLiteDatabaseTest, AFailedMigrationLeavesTheFileAsItWas) {
    {
        SQLiteDatabase old(path(), kNotes);
        add(old, "kept");
    }
    constexpr const char* kBroken[] = {kNotes[0], "DELETE FROM notes", "UPDATE nowhere SET text = 1"};
    {
        SQLiteDatabase broken(path(), kBroken);
        EXPECT_TRUE(broken.hasFailed());
        EXPECT_FALSE(broken.isDamaged());
        EXPECT_TRUE(textsOf(broken).empty());
    }
    SQLiteDatabase database(path(), kNotes);
    EXPECT_EQ(textsOf(database), std::vector<std::string>{"kept"});
}

TEST_F(SQLiteDatabaseTest, LeavesAloneWhatIsNotItsOwn) {
    struct Case {
        const char* name;
        std::function<void(const std::string& file)> make;
        const char* said;
        bool isDamaged;
    };
    const Case cases[] = {
        {"no database", [](const std::string& file) { std::ofstream(file) << std::string(5000, 'x'); },
            "is damaged or no database", true},
        {"a later version",
            [](const std::string& file) {
                constexpr const char* kLater[] = {kNotes[0], "CREATE TABLE more (a)"};
                const SQLiteDatabase later(file, kLater);
            },
            "written by a newer version of this program (version 2, this one knows 1)", false},
        {"an impossible version",
            [](const std::string& file) {
                SQLiteDatabase other(file, {});
                other.execute("PRAGMA user_version = -1");
            },
            "newer version", false},
        {"another program's",
            [](const std::string& file) {
                SQLiteDatabase other(file, {});
                other.execute("CREATE TABLE notes (other)");
            },
            "is not this program's", false},
        {"a folder", [](const std::string& file) { fs::create_directory(file); }, "cannot be opened", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string file = path(c.name);
        c.make(file);
        const std::string before = contentOf(file);
        {
            SQLiteDatabase database(file, kNotes);
            ASSERT_TRUE(database.hasFailed());
            EXPECT_THAT(*database.error(), HasSubstr(c.said));
            EXPECT_THAT(*database.error(), HasSubstr(file));
            EXPECT_EQ(database.isDamaged(), c.isDamaged);
            add(database, "lost");
        }
        EXPECT_EQ(contentOf(file), before);
    }
}

TEST_F(SQLiteDatabaseTest, DoesNothingAfterTheFirstFailureAndKeepsItsCause) {
    SQLiteDatabase database(path(), kNotes);
    database.beginImmediate();
    add(database, "undone");
    database.execute("INSERT INTO nowhere VALUES (1)");
    const auto first = database.error();
    ASSERT_TRUE(first.has_value());
    EXPECT_THAT(*first, HasSubstr("nowhere"));
    database.execute("another mistake");
    database.fail("yet another one");
    EXPECT_EQ(database.error(), first);
    EXPECT_FALSE(database.query("SELECT 1").step());
    database.commit();
    database.rollBack();
    database.rollBack(); // Without a transaction it does nothing.
    SQLiteDatabase again(path(), kNotes);
    EXPECT_TRUE(textsOf(again).empty());
    add(again, "written");
    EXPECT_EQ(again.error(), std::nullopt) << "the failed one holds no lock";
}

TEST_F(SQLiteDatabaseTest, UndoesATransactionThatWasNotCommitted) {
    {
        SQLiteDatabase database(path(), kNotes);
        add(database, "before");
        database.beginImmediate();
        add(database, "within");
        EXPECT_EQ(textsOf(database).size(), 2U);
        SQLiteDatabase reader(path(), kNotes);
        EXPECT_EQ(textsOf(reader), std::vector<std::string>{"before"}) << "others read on meanwhile";
    }
    SQLiteDatabase database(path(), kNotes);
    EXPECT_EQ(textsOf(database), std::vector<std::string>{"before"});
    database.beginImmediate();
    add(database, "after");
    database.commit();
    EXPECT_EQ(textsOf(database).size(), 2U);
    EXPECT_EQ(database.lastInsertedRow(), 2);
}

TEST_F(SQLiteDatabaseTest, AStatementStartsAgainWithoutTheRowsAndArgumentsOfBefore) {
    SQLiteDatabase database(path(), kNotes);
    for (const char* const text : {"a", "b", "c"}) {
        add(database, text);
    }
    constexpr const char* kText = "SELECT number FROM notes WHERE text = ? OR text = ?";
    {
        auto query = database.query(kText, {"a", "b"});
        ASSERT_TRUE(query.step()); // Left in the middle.
        query.restart({"c", Value()});
        ASSERT_TRUE(query.step());
        EXPECT_EQ(query.integer(0), 3);
        EXPECT_FALSE(query.step());
        auto sameText = database.query(kText, {"a", "c"}); // While the first one is in use.
        EXPECT_TRUE(sameText.step());
        EXPECT_TRUE(sameText.step());
    }
    auto later = database.query(kText, {"b"}); // Its second argument is nothing, not that of before.
    ASSERT_TRUE(later.step());
    EXPECT_EQ(later.integer(0), 2);
    EXPECT_FALSE(later.step());
    const SQLiteStatement moved = std::move(later);
    EXPECT_FALSE(later.step()); // NOLINT(bugprone-use-after-move): a moved one has no rows.
    EXPECT_EQ(database.error(), std::nullopt);
}

TEST_F(SQLiteDatabaseTest, KeepsMoreStatementsThanItCanStore) {
    SQLiteDatabase database(path(), kNotes);
    for (int round = 0; round < 2; ++round) {
        for (int number = 0; number < 100; ++number) {
            auto row = database.query("SELECT " + std::to_string(number));
            ASSERT_TRUE(row.step());
            EXPECT_EQ(row.integer(0), number);
        }
    }
}

TEST_F(SQLiteDatabaseTest, RefusesATextThatIsLongerThanItTakes) {
    SQLiteDatabase database(path(), kNotes);
    database.execute("INSERT INTO notes (text) VALUES (?)", {std::string((16 << 20) - 100, 'x')});
    EXPECT_EQ(database.error(), std::nullopt);
    database.execute("INSERT INTO notes (text) VALUES (?)", {std::string((16 << 20) + 1, 'x')});
    ASSERT_TRUE(database.hasFailed());
    EXPECT_THAT(*database.error(), HasSubstr("cannot take a text that long"));
    EXPECT_FALSE(database.isDamaged());
}

TEST_F(SQLiteDatabaseTest, CallsTheFunctionsOfItsQueries) {
    SQLiteDatabase database(path(), kNotes);
    std::vector<Value::Kind> kinds;
    database.setFunction("note", [&](std::span<const Value> arguments) {
        for (const Value& argument : arguments) {
            kinds.push_back(argument.kind());
        }
        return arguments.size() == 4;
    });
    auto row = database.query("SELECT note(1, 0.5, 'a' || char(0) || 'b', NULL), note()");
    ASSERT_TRUE(row.step());
    EXPECT_EQ(row.integer(0), 1);
    EXPECT_EQ(row.integer(1), 0);
    EXPECT_EQ(kinds.size(), 4U);
    EXPECT_EQ(kinds.back(), Value::Kind::Nothing);
}

TEST_F(SQLiteDatabaseTest, NothingThatTheFileHoldsRuns) {
    {
        SQLiteDatabase hostile(path(), kNotes);
        hostile.execute("CREATE TABLE calls (n)");
        hostile.execute("CREATE TRIGGER spy AFTER INSERT ON notes BEGIN INSERT INTO calls VALUES (1); END");
        hostile.execute("CREATE VIEW shown AS SELECT note(text) FROM notes");
        ASSERT_EQ(hostile.error(), std::nullopt);
    }
    SQLiteDatabase database(path(), kNotes);
    bool isCalled = false;
    database.setFunction("note", [&isCalled](std::span<const Value> /*arguments*/) {
        isCalled = true;
        return true;
    });
    add(database, "harmless");
    auto calls = database.query("SELECT count(*) FROM calls");
    ASSERT_TRUE(calls.step());
    EXPECT_EQ(calls.integer(0), 0);
    EXPECT_FALSE(database.query("SELECT * FROM shown").step());
    EXPECT_FALSE(isCalled);
}

TEST_F(SQLiteDatabaseTest, OnlyReadsWhereNobodyCanWrite) {
    const fs::path folder = _home.path() / "read only & 100%";
    fs::create_directory(folder);
    const std::string file = folder / "notes.sqlite";
    {
        SQLiteDatabase database(file, kNotes);
        add(database, "kept");
    }
    fs::permissions(_home.path(), fs::perms::all);
    fs::permissions(file, fs::perms::all);
    constexpr auto kEverybodyReads = fs::perms{0555};
    fs::permissions(folder, kEverybodyReads);
    const ReducedRights reduced;
    SQLiteDatabase database(file, kNotes);
    EXPECT_EQ(textsOf(database), std::vector<std::string>{"kept"});
    EXPECT_EQ(database.error(), std::nullopt);
    add(database, "more");
    ASSERT_TRUE(database.hasFailed());
    EXPECT_THAT(*database.error(), HasSubstr("cannot be written"));
}

} // namespace
} // namespace exifcard
