#include "platform/sqlite/SQLiteDatabase.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace exifcard {
namespace {

/// How long a program waits for another one that writes.
constexpr int kLongestWaitInMilliseconds = 10'000;
/// The longest text or row that is read or written; a damaged length cannot ask for more.
constexpr int kLongestValueInBytes = 16 << 20;

struct CodeText {
    int code;
    std::string_view text;
};
constexpr CodeText kCauses[] = {
    {SQLITE_NOTADB, "is damaged or no database; it was left as it is, move it away to start anew"},
    {SQLITE_CORRUPT, "is damaged; it was left as it is, move it away to start anew"},
    {SQLITE_ERROR, "is not this program's; it was left as it is, move it away to start anew"},
    {SQLITE_READONLY, "cannot be written; check the rights of the file and its folder"},
    {SQLITE_CANTOPEN, "cannot be opened; check the rights of the file and its folder"},
    {SQLITE_PERM, "cannot be opened; check the rights of the file and its folder"},
    {SQLITE_FULL, "cannot grow; the disk is full"},
    {SQLITE_IOERR, "cannot be read or written; check the disk and the room on it"},
    {SQLITE_BUSY, "is in use by another program; try again"},
    {SQLITE_TOOBIG, "cannot take a text that long"},
};

std::string_view causeOfCode(int code) {
    constexpr int kPrimaryCode = 0xff; // What is above it only refines the cause.
    for (const CodeText& cause : kCauses) {
        if (cause.code == (code & kPrimaryCode)) {
            return cause.text;
        }
    }
    return "cannot be used";
}

/// Makes a missing file with the owner's rights alone; its companions take them over.
void makePrivateFile(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

int bind(sqlite3_stmt* statement, int position, const Value& value) {
    if (const std::string* const text = value.text()) {
        return sqlite3_bind_text64(
            statement, position, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    if (value.isNothing()) {
        return sqlite3_bind_null(statement, position);
    }
    return sqlite3_bind_int64(statement, position, value.integerValue());
}

} // namespace

class SQLiteDatabase::Connection {
public:
    /// Null only when there is no memory; otherwise to be asked for its error.
    explicit Connection(const std::string& path) {
        sqlite3_open_v2(path.c_str(), &_database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    }
    ~Connection() { sqlite3_close_v2(_database); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Nothing in the file, whoever wrote it, may run or take memory beyond what is asked of it.
    void distrustSchema() const {
        sqlite3_db_config(_database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(_database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_db_config(_database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
        sqlite3_db_config(_database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
        sqlite3_limit(_database, SQLITE_LIMIT_LENGTH, kLongestValueInBytes);
    }

    sqlite3* get() const { return _database; }

private:
    sqlite3* _database = nullptr;
};

class SQLiteStatement::Handle {
public:
    Handle(SQLiteDatabase& database, sqlite3_stmt* statement) : _database(database), _statement(statement) {}
    ~Handle() { sqlite3_finalize(_statement); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool step() {
        const int code = _database.hasFailed() ? SQLITE_DONE : sqlite3_step(_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            _database.failWithCode(code);
        }
        return code == SQLITE_ROW;
    }
    sqlite3_stmt* get() const { return _statement; }

private:
    SQLiteDatabase& _database;
    sqlite3_stmt* _statement;
};

SQLiteStatement::SQLiteStatement(std::unique_ptr<Handle> handle) : _handle(std::move(handle)) {
}

SQLiteStatement::~SQLiteStatement() = default;
SQLiteStatement::SQLiteStatement(SQLiteStatement&& other) noexcept = default;

bool SQLiteStatement::step() {
    return _handle && _handle->step();
}

std::int64_t SQLiteStatement::integer(int column) const {
    return sqlite3_column_int64(_handle->get(), column);
}

std::optional<std::string> SQLiteStatement::text(int column) const {
    const auto* const text = sqlite3_column_text(_handle->get(), column);
    if (text == nullptr) {
        return std::nullopt;
    }
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(_handle->get(), column));
    return std::string(text, text + length);
}

bool SQLiteStatement::isNull(int column) const {
    return sqlite3_column_type(_handle->get(), column) == SQLITE_NULL;
}

SQLiteDatabase::SQLiteDatabase(std::string path, std::span<const char* const> migrations)
    : _path(std::move(path)) {
    open();
    migrate(migrations);
}

SQLiteDatabase::~SQLiteDatabase() = default;

void SQLiteDatabase::open() {
    makePrivateFile(_path);
    _connection = std::make_unique<Connection>(_path);
    if (const int code = sqlite3_errcode(_connection->get()); code != SQLITE_OK) {
        failWithCode(code);
        return;
    }
    sqlite3_extended_result_codes(_connection->get(), 1);
    sqlite3_busy_timeout(_connection->get(), kLongestWaitInMilliseconds);
    _connection->distrustSchema();
    execute("PRAGMA synchronous = FULL");
}

void SQLiteDatabase::migrate(std::span<const char* const> migrations) {
    const auto latest = static_cast<std::int64_t>(migrations.size());
    std::int64_t version = schemaVersion();
    if (version == 0 && !hasFailed()) {
        // Kept in the file from then on. Another program may be doing the same, so a refusal is no failure.
        sqlite3_exec(_connection->get(), "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
    }
    if (version < latest) {
        beginImmediate();
        version = schemaVersion(); // Another program may have been first.
    }
    if (version > latest || version < 0) {
        fail(fmt::format("{} was written by a newer version of this program (version {}, this one knows {})",
            _path, version, latest));
        return;
    }
    for (; version < latest && !hasFailed(); ++version) {
        const char* const sql = migrations[static_cast<std::size_t>(version)];
        if (const int code = sqlite3_exec(_connection->get(), sql, nullptr, nullptr, nullptr);
            code != SQLITE_OK) {
            failWithCode(code);
        }
        execute(fmt::format("PRAGMA user_version = {}", version + 1));
    }
    if (sqlite3_get_autocommit(_connection->get()) == 0) {
        commit();
    }
}

std::int64_t SQLiteDatabase::schemaVersion() {
    auto answer = query("PRAGMA user_version");
    return answer.step() ? answer.integer(0) : 0;
}

void SQLiteDatabase::beginImmediate() {
    execute("BEGIN IMMEDIATE");
}

void SQLiteDatabase::commit() {
    execute("COMMIT");
}

void SQLiteDatabase::execute(std::string_view sql, std::initializer_list<Value> arguments) {
    auto statement = query(sql, arguments);
    while (statement.step()) {}
}

SQLiteStatement SQLiteDatabase::query(std::string_view sql, std::initializer_list<Value> arguments) {
    if (hasFailed()) {
        return SQLiteStatement(nullptr);
    }
    sqlite3_stmt* statement = nullptr;
    int code =
        sqlite3_prepare_v2(_connection->get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    auto handle = std::make_unique<SQLiteStatement::Handle>(*this, statement);
    int position = 0;
    for (const Value& argument : arguments) {
        code = code == SQLITE_OK ? bind(statement, ++position, argument) : code;
    }
    if (code != SQLITE_OK) {
        failWithCode(code);
        return SQLiteStatement(nullptr);
    }
    return SQLiteStatement(std::move(handle));
}

std::int64_t SQLiteDatabase::lastInsertedRow() const {
    return sqlite3_last_insert_rowid(_connection->get());
}

void SQLiteDatabase::fail(std::string error) {
    if (!_error) {
        _error = std::move(error);
    }
}

void SQLiteDatabase::failWithCode(int code) {
    const int systemError = sqlite3_system_errno(_connection->get());
    const std::string detail = code == SQLITE_CANTOPEN && systemError != 0
                                   ? std::generic_category().message(systemError)
                                   : std::string(sqlite3_errmsg(_connection->get()));
    fail(fmt::format("{} {} ({})", _path, causeOfCode(code), detail));
}

} // namespace exifcard
