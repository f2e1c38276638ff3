#include "platform/sqlite/SQLiteDatabase.h"

#include "platform/foundation/URL.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <filesystem>
#include <functional>
#include <map>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace exifcard {
namespace {

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

/// Without what only refines the cause.
int primaryCode(int code) {
    return code & 0xff;
}

std::string_view causeOfCode(int code) {
    for (const CodeText& cause : kCauses) {
        if (cause.code == primaryCode(code)) {
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

/// A file with write-ahead logging cannot be opened where nothing can be written beside it, unless it is said
/// that nobody changes it.
bool isOutOfReachForWriters(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return ::access(path.c_str(), R_OK) == 0 && ::access(folder.empty() ? "." : folder.c_str(), W_OK) != 0 &&
           ::access((path + "-wal").c_str(), F_OK) != 0;
}

int bind(sqlite3_stmt* statement, int position, const Value& value) {
    if (const std::string* const text = value.text()) {
        return sqlite3_bind_text64(
            statement, position, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    switch (value.kind()) {
    case Value::Kind::Nothing:
        return sqlite3_bind_null(statement, position);
    case Value::Kind::Float:
    case Value::Kind::Double:
        return sqlite3_bind_double(statement, position, value.doubleValue());
    case Value::Kind::Date:
        return sqlite3_bind_double(statement, position, value.date()->secondsSince1970);
    case Value::Kind::Data: {
        const Data bytes = *value.data();
        // Without bytes it is still a blob, not a null.
        return sqlite3_bind_blob64(statement, position,
            bytes.empty() ? "" : static_cast<const void*>(bytes.data()), bytes.size(), SQLITE_TRANSIENT);
    }
    default:
        return sqlite3_bind_int64(statement, position, value.integerValue());
    }
}

int bindAll(sqlite3_stmt* statement, std::span<const Value> arguments) {
    int position = 0;
    for (const Value& argument : arguments) {
        if (const int code = bind(statement, ++position, argument); code != SQLITE_OK) {
            return code;
        }
    }
    return SQLITE_OK;
}

/// What a function of a query is given; a blob comes as nothing.
Value valueOf(sqlite3_value* argument) {
    switch (sqlite3_value_type(argument)) {
    case SQLITE_INTEGER:
        return static_cast<std::int64_t>(sqlite3_value_int64(argument));
    case SQLITE_FLOAT:
        return sqlite3_value_double(argument);
    case SQLITE_TEXT: {
        const auto* const text = sqlite3_value_text(argument);
        return std::string(text, text + sqlite3_value_bytes(argument));
    }
    default:
        return {};
    }
}

void callFunction(sqlite3_context* context, int count, sqlite3_value** arguments) {
    const auto& function = *static_cast<SQLiteDatabase::Function*>(sqlite3_user_data(context));
    std::vector<Value> values;
    for (sqlite3_value* const argument : std::span(arguments, static_cast<std::size_t>(count))) {
        values.push_back(valueOf(argument));
    }
    sqlite3_result_int(context, function(values) ? 1 : 0);
}

} // namespace

class SQLiteDatabase::Connection {
public:
    /// Null only when there is no memory; otherwise to be asked for its error.
    explicit Connection(const std::string& path) {
        if (isOutOfReachForWriters(path)) {
            const std::string address = URL::fileURLWithPath(path).absoluteString() + "?immutable=1";
            sqlite3_open_v2(address.c_str(), &_database,
                SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
        } else {
            sqlite3_open_v2(path.c_str(), &_database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        }
    }
    ~Connection() {
        for (const auto& [sql, statement] : _idle) {
            sqlite3_finalize(statement);
        }
        sqlite3_close_v2(_database);
    }
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

    /// A statement for the text: one that was done with, else a new one. Null for a text that is none.
    sqlite3_stmt* takeStatement(std::string_view sql) {
        if (const auto idle = _idle.find(sql); idle != _idle.end()) {
            sqlite3_stmt* const statement = idle->second;
            _idle.erase(idle);
            return statement;
        }
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(_database, sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
        return statement;
    }
    /// Keeps it for the same text, which costs more to prepare than most queries take.
    void giveBack(sqlite3_stmt* statement) {
        sqlite3_reset(statement);
        if (_idle.size() >= kMostIdleStatements) {
            sqlite3_finalize(statement);
            return;
        }
        sqlite3_clear_bindings(statement);
        _idle.emplace(sqlite3_sql(statement), statement);
    }

private:
    static constexpr std::size_t kMostIdleStatements = 32;

    sqlite3* _database = nullptr;
    std::multimap<std::string, sqlite3_stmt*, std::less<>> _idle;
};

class SQLiteStatement::Handle {
public:
    Handle(SQLiteDatabase& database, sqlite3_stmt* statement) : _database(database), _statement(statement) {}
    ~Handle() {
        if (_statement != nullptr) {
            _database._connection->giveBack(_statement);
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool step() {
        const int code = _database.hasFailed() ? SQLITE_DONE : sqlite3_step(_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            _database.failWithCode(code);
        }
        return code == SQLITE_ROW;
    }
    void restart(std::span<const Value> arguments) {
        sqlite3_reset(_statement);
        if (const int code = bindAll(_statement, arguments); code != SQLITE_OK) {
            _database.failWithCode(code);
        }
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

void SQLiteStatement::restart(std::span<const Value> arguments) {
    if (_handle) {
        _handle->restart(arguments);
    }
}

std::int64_t SQLiteStatement::integer(int column) const {
    return sqlite3_column_int64(_handle->get(), column);
}

double SQLiteStatement::real(int column) const {
    return sqlite3_column_double(_handle->get(), column);
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

SQLiteDatabase::SQLiteDatabase(std::string path,
    std::span<const char* const> migrations,
    Durability durability,
    std::chrono::milliseconds longestWait)
    : _path(std::move(path)) {
    open(durability, longestWait);
    migrate(migrations, durability);
}

SQLiteDatabase::~SQLiteDatabase() = default;

void SQLiteDatabase::open(Durability durability, std::chrono::milliseconds longestWait) {
    makePrivateFile(_path);
    _connection = std::make_unique<Connection>(_path);
    if (const int code = sqlite3_errcode(_connection->get()); code != SQLITE_OK) {
        failWithCode(code);
        return;
    }
    sqlite3_extended_result_codes(_connection->get(), 1);
    sqlite3_busy_timeout(_connection->get(), static_cast<int>(longestWait.count()));
    _connection->distrustSchema();
    if (durability == Durability::Lasting) {
        execute("PRAGMA synchronous = FULL");
    } else {
        execute("PRAGMA synchronous = OFF");
        execute("PRAGMA journal_mode = MEMORY");
    }
}

void SQLiteDatabase::migrate(std::span<const char* const> migrations, Durability durability) {
    const auto latest = static_cast<std::int64_t>(migrations.size());
    std::int64_t version = schemaVersion();
    if (version == 0 && durability == Durability::Lasting && hasNoTables()) {
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

bool SQLiteDatabase::hasNoTables() {
    auto tables = query("SELECT 1 FROM sqlite_schema");
    return !tables.step() && !hasFailed();
}

void SQLiteDatabase::beginImmediate() {
    execute("BEGIN IMMEDIATE");
}

void SQLiteDatabase::commit() {
    execute("COMMIT");
}

void SQLiteDatabase::rollBack() {
    if (sqlite3_get_autocommit(_connection->get()) == 0) {
        sqlite3_exec(_connection->get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void SQLiteDatabase::execute(std::string_view sql, std::initializer_list<Value> arguments) {
    auto statement = query(sql, arguments);
    while (statement.step()) {}
}

SQLiteStatement SQLiteDatabase::query(std::string_view sql, std::span<const Value> arguments) {
    if (hasFailed()) {
        return SQLiteStatement(nullptr);
    }
    sqlite3_stmt* const statement = _connection->takeStatement(sql);
    auto handle = std::make_unique<SQLiteStatement::Handle>(*this, statement);
    const int code =
        statement != nullptr ? bindAll(statement, arguments) : sqlite3_errcode(_connection->get());
    if (code != SQLITE_OK) {
        failWithCode(code);
        return SQLiteStatement(nullptr);
    }
    return SQLiteStatement(std::move(handle));
}

void SQLiteDatabase::setFunction(const std::string& name, Function function) {
    auto owned = std::make_unique<Function>(std::move(function));
    constexpr int kAnyCount = -1;
    const int code = sqlite3_create_function_v2(_connection->get(), name.c_str(), kAnyCount,
        SQLITE_UTF8 | SQLITE_DIRECTONLY | SQLITE_DETERMINISTIC, owned.get(), callFunction, nullptr, nullptr,
        [](void* dropped) { delete static_cast<Function*>(dropped); });
    // It is the database's from here on, also where that refuses it.
    static_cast<void>(owned.release());
    if (code != SQLITE_OK) {
        failWithCode(code);
    }
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
    _isDamaged = _isDamaged || primaryCode(code) == SQLITE_CORRUPT || primaryCode(code) == SQLITE_NOTADB;
    const int systemError = sqlite3_system_errno(_connection->get());
    const std::string detail = code == SQLITE_CANTOPEN && systemError != 0
                                   ? std::generic_category().message(systemError)
                                   : std::string(sqlite3_errmsg(_connection->get()));
    fail(fmt::format("{} {} ({})", _path, causeOfCode(code), detail));
}

} // namespace exifcard
