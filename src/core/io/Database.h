// SPDX-License-Identifier: MIT
// A database in a file, as the module "database" makes it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tesselink {

/// One command, prepared once and run with ever new values. Parameters are counted from 1; texts and bytes must live
/// until it has run.
class DatabaseCommand {
 public:
  virtual ~DatabaseCommand() = default;
  virtual void SetNull(int parameter) = 0;
  virtual void SetInteger(int parameter, std::int64_t value) = 0;
  virtual void SetReal(int parameter, double value) = 0;
  virtual void SetText(int parameter, std::string_view text) = 0;
  virtual void SetBytes(int parameter, std::string_view bytes) = 0;
  /// Throws Error.
  virtual void Run() = 0;
};

/// A fresh database. Errors name its file. It keeps no journal beside it and is of no use before it is closed, so that
/// the file must be deleted when something fails.
class Database {
 public:
  virtual ~Database() = default;
  /// Runs commands, separated by semicolons. Throws Error.
  virtual void Run(const std::string& commands) = 0;
  /// The command must not outlive the database. Throws Error.
  virtual std::unique_ptr<DatabaseCommand> Prepare(const std::string& command) = 0;
  /// Completes the file. Throws Error.
  virtual void Close() = 0;
};

}  // namespace tesselink
