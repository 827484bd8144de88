// SPDX-License-Identifier: MIT
// The command line's program at work for the window.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>
#include <optional>
#include <string>
#include <vector>

#include "core/io/ChildProcess.h"

namespace tesselink {

/// One process at a time, looked at while events are handled.
class EngineCall final : public QObject {
  Q_OBJECT
 public:
  explicit EngineCall(QObject* parent = nullptr);
  /// Asks a process that still runs to end, and gives it a little time for that.
  ~EngineCall() override;

  bool IsRunning() const { return process_.has_value(); }
  /// Starts the program, by arguments without its name. Its end is told by `ended`, also where it cannot be started.
  void Start(const std::string& program, std::vector<std::string> arguments);
  void AskToEnd();

 signals:
  /// Now and then while it runs.
  void ticked();
  /// With what it has printed, and the errors that it has told.
  void ended(int exitCode, const QByteArray& output, const QString& errors);

 private:
  void Look();

  std::optional<ChildProcess> process_;
  QTimer timer_;
};

}  // namespace tesselink
