// SPDX-License-Identifier: MIT
#include "ui/EngineCall.h"

#include <QStringList>
#include <QThread>
#include <system_error>

#include "ui/OptionNaming.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kBetweenLooks = 60, kGrace = 3000;  // milliseconds
constexpr std::size_t kMostPrinted = std::size_t{1} << 26;

// What stands on standard error behind the program's name, a line each.
QString ErrorsIn(const std::string& errors) {
  QStringList lines;
  for (const QString& line : Shown(errors).split('\n')) {
    const QString said = line.startsWith("tesselink: ") ? line.mid(11) : QString();
    if (!said.isEmpty() && !said.startsWith("warning: ")) lines.append(WithoutOptions(said));
  }
  return lines.join('\n');
}

}  // namespace

EngineCall::EngineCall(QObject* parent) : QObject(parent) {
  timer_.setInterval(kBetweenLooks);
  connect(&timer_, &QTimer::timeout, this, &EngineCall::Look);
}

EngineCall::~EngineCall() {
  AskToEnd();
  for (int waited = 0; process_ && !process_->HasEnded() && waited < kGrace; waited += kBetweenLooks) {
    QThread::msleep(kBetweenLooks);
  }
}

void EngineCall::Start(const std::string& program, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "tesselink");
  try {
    process_.emplace(program, arguments, kMostPrinted);
    timer_.start();
  } catch (const ChildNotStarted& failure) {
    const QString why =
        tr("%1 could not be started: %2").arg(Shown(program), Shown(std::generic_category().message(failure.reason)));
    QTimer::singleShot(0, this, [this, why] { emit ended(-1, {}, why); });
  }
}

void EngineCall::AskToEnd() {
  if (process_) process_->Stop(sys::StopSignal::Ask);
}

void EngineCall::Look() {
  if (!process_->HasEnded()) {
    emit ticked();
    return;
  }
  timer_.stop();
  const sys::Ending ending = process_->HowEnded();
  const QByteArray output = QByteArray::fromStdString(process_->Output());
  QString errors = ErrorsIn(process_->Errors());
  if (ending.signal != 0) errors = tr("The program ended: %1").arg(Shown(sys::NameOf(ending.signal)));
  process_.reset();
  emit ended(ending.exitCode, output, errors);
}

}  // namespace tesselink
