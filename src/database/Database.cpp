// SPDX-License-Identifier: MIT
// The module "database", by SQLite.
#include "core/io/Database.h"

#include <sqlite3.h>

#include "core/io/Errors.h"

namespace tesselink {
namespace {

class SqliteCommand final : public DatabaseCommand {
 public:
  SqliteCommand(sqlite3* database, const std::string& path, const std::string& command)
      : database_(database), path_(path) {
    Check(sqlite3_prepare_v3(database_, command.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
  }
  SqliteCommand(const SqliteCommand&) = delete;
  SqliteCommand& operator=(const SqliteCommand&) = delete;
  ~SqliteCommand() override { sqlite3_finalize(statement_); }

  void SetNull(int parameter) override { Check(sqlite3_bind_null(statement_, parameter)); }
  void SetInteger(int parameter, std::int64_t value) override {
    Check(sqlite3_bind_int64(statement_, parameter, value));
  }
  void SetReal(int parameter, double value) override { Check(sqlite3_bind_double(statement_, parameter, value)); }
  // A null pointer would stand for no value.
  void SetText(int parameter, std::string_view text) override {
    const char* const begin = text.data() != nullptr ? text.data() : "";
    Check(sqlite3_bind_text64(statement_, parameter, begin, text.size(), SQLITE_STATIC, SQLITE_UTF8));
  }
  void SetBytes(int parameter, std::string_view bytes) override {
    Check(sqlite3_bind_blob64(statement_, parameter, bytes.data(), bytes.size(), SQLITE_STATIC));
  }
  void Run() override {
    const int result = sqlite3_step(statement_);
    const int ended = sqlite3_reset(statement_);
    Check(result == SQLITE_DONE || result == SQLITE_ROW ? ended : result);
  }

 private:
  void Check(int result) const {
    if (result != SQLITE_OK) throw Error(path_ + ": could not be written: " + sqlite3_errmsg(database_));
  }

  sqlite3* database_;
  const std::string& path_;
  sqlite3_stmt* statement_ = nullptr;
};

class SqliteDatabase final : public Database {
 public:
  explicit SqliteDatabase(const char* path) : path_(path) {
    // So that no name has a meaning of its own.
    const std::string file = (path_.starts_with('/') ? "" : "./") + path_;
    try {
      Check(sqlite3_open_v2(file.c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr));
      Run("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA locking_mode = EXCLUSIVE; "
          "PRAGMA temp_store = MEMORY; PRAGMA cache_size = -32768");
    } catch (...) {
      sqlite3_close_v2(database_);
      throw;
    }
  }
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;
  ~SqliteDatabase() override { sqlite3_close_v2(database_); }

  void Run(const std::string& commands) override {
    Check(sqlite3_exec(database_, commands.c_str(), nullptr, nullptr, nullptr));
  }
  std::unique_ptr<DatabaseCommand> Prepare(const std::string& command) override {
    return std::make_unique<SqliteCommand>(database_, path_, command);
  }
  void Close() override {
    Check(sqlite3_close(database_));
    database_ = nullptr;
  }

 private:
  void Check(int result) const {
    if (result != SQLITE_OK) throw Error(path_ + ": could not be written: " + sqlite3_errmsg(database_));
  }

  std::string path_;
  sqlite3* database_ = nullptr;
};

}  // namespace
}  // namespace tesselink

extern "C" tesselink::Database* Create(const char* path) { return new tesselink::SqliteDatabase(path); }
