#pragma once

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Value.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace exifcard {

class SQLiteDatabase;

/// The rows of one query, one at a time. Lives no longer than its database; a
/// text or a number of a row is the caller's.
class SQLiteStatement {
public:
    ~SQLiteStatement();
    SQLiteStatement(SQLiteStatement&& other) noexcept;
    SQLiteStatement(const SQLiteStatement&) = delete;
    SQLiteStatement& operator=(const SQLiteStatement&) = delete;
    SQLiteStatement& operator=(SQLiteStatement&&) = delete;

    /// Goes to the next row. False behind the last one and when something failed.
    bool step();

    /// Starts again with other arguments, without preparing anything anew.
    void restart(std::span<const Value> arguments);
    void restart(std::initializer_list<Value> arguments) { restart(std::span(arguments)); }

    /// A column of the row, counted from 0. A number that is no number reads as 0.
    std::int64_t integer(int column) const;
    double real(int column) const;
    /// Nothing for a null. The bytes of a blob come as they are.
    std::optional<std::string> text(int column) const;
    bool isNull(int column) const;

private:
    friend class SQLiteDatabase;
    class Handle;
    explicit SQLiteStatement(std::unique_ptr<Handle> handle);

    std::unique_ptr<Handle> _handle; // Null when the query could not be made.
};

/// One connection to a database file that several programs share: write-ahead
/// logging, synced at each commit, with a schema that is brought up to date
/// when it is opened. For one thread at a time.
///
/// Nothing throws. After the first failure every call does nothing, so that a
/// run of calls needs one look at `error` at its end.
class SQLiteDatabase {
public:
    /// Long enough for another program's batch on a slow disk.
    static constexpr std::chrono::milliseconds kLongestWait = std::chrono::seconds(10);

    /// Opens the file, or makes it for its owner only.
    /// @param migrations  What turns version n into n + 1 at index n; a new file is
    ///                    version 0. A file of a later version than there are is left
    ///                    alone, and so is one that is no database. In a folder that
    ///                    nobody can write to, the file is only read.
    /// @param durability  Replaceable: for a copy that is made at one go, without companions and unsynced.
    ///                    After a power cut it may be damaged, so it is to be synced before it is used.
    /// @param longestWait For another program that writes, each time.
    SQLiteDatabase(std::string path,
        std::span<const char* const> migrations,
        Durability durability = Durability::Lasting,
        std::chrono::milliseconds longestWait = kLongestWait);
    ~SQLiteDatabase();
    SQLiteDatabase(const SQLiteDatabase&) = delete;
    SQLiteDatabase& operator=(const SQLiteDatabase&) = delete;

    /// Waits for other programs that write, and begins a
    /// transaction. Without a `commit` it is rolled back with the database.
    void beginImmediate();
    void commit();
    /// Undoes the transaction and, in this alone, works after a failure too, which stays.
    void rollBack();

    // Arguments: numbers and texts as they are, a date as its seconds since 1970, data as a blob.
    void execute(std::string_view sql, std::initializer_list<Value> arguments = {});
    SQLiteStatement query(std::string_view sql, std::initializer_list<Value> arguments = {}) {
        return query(sql, std::span(arguments));
    }
    SQLiteStatement query(std::string_view sql, std::span<const Value> arguments);
    std::int64_t lastInsertedRow() const;

    /// Answers null, numbers or texts as it is given them.
    using Function = std::function<bool(std::span<const Value> arguments)>;
    /// Makes a function for the texts of later queries; not for what the file itself holds. In place of an
    /// earlier one of that name, whose queries must be gone.
    void setFunction(const std::string& name, Function function);

    bool hasFailed() const { return _error.has_value(); }
    /// Whether it failed because the file is damaged or no database.
    bool isDamaged() const { return _isDamaged; }
    /// What went wrong first: one sentence with the file and the cause.
    const std::optional<std::string>& error() const { return _error; }
    /// Makes every later call do nothing, as after a failure of the database's own.
    void fail(std::string error);

private:
    friend class SQLiteStatement;
    class Connection;

    void open(Durability durability, std::chrono::milliseconds longestWait);
    void migrate(std::span<const char* const> migrations, Durability durability);
    std::int64_t schemaVersion();
    bool hasNoTables();
    void failWithCode(int code);

    std::string _path;
    std::unique_ptr<Connection> _connection;
    std::optional<std::string> _error;
    bool _isDamaged = false;
};

} // namespace exifcard
