// SPDX-License-Identifier: MIT
// The one error type, and the cancelled operation that is not an error.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tesselink {

/// A failure that a person is told: what happened (file, line or record, what was expected, what to do) and the
/// name of the member that failed.
class Error : public std::runtime_error {
 public:
  explicit Error(const std::string& description, std::string source = {})
      : std::runtime_error(description), source_(std::move(source)) {}

  /// The member that failed, as in "GetNextEntity"; empty where it says nothing.
  const std::string& Source() const { return source_; }

 private:
  std::string source_;
};

/// An element was refused because the file has no room for it; nothing of it was written, and what was written before
/// is whole.
class FileFull : public Error {
 public:
  using Error::Error;
};

/// What a person allows a run has been used up; what was delivered before is whole.
class LimitReached : public Error {
 public:
  using Error::Error;
};

/// The system does not give the bytes of a file: no right, a broken disk, a file that others cut short. What the file
/// says has nothing to do with it.
class ReadFailed : public Error {
 public:
  using Error::Error;
};

/// Raised to leave an operation that the person cancelled. A run that meets it ends without an error message.
struct OperationCanceled {};

}  // namespace tesselink
