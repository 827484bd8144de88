#include "app/QtSettings.h"

#include <QByteArray>
#include <QSettings>
#include <QString>

namespace tesselink {
namespace {

QSettings Open(const std::string& application) {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Tesselink"),
                   QString::fromStdString(application));
}

// Keys are layer names: any byte may occur in one, and the separators of the store must not.
QString Encoded(const std::string& text) {
  return QString::fromLatin1(QByteArray::fromStdString(text).toPercentEncoding());
}

std::string Decoded(const QString& text) { return QByteArray::fromPercentEncoding(text.toLatin1()).toStdString(); }

QString Path(const std::string& section, const std::string& key) { return Encoded(section) + u'/' + Encoded(key); }

}  // namespace

std::string QtSettings::Get(const std::string& application, const std::string& section, const std::string& key,
                            const std::string& whenAbsent) {
  const QSettings store = Open(application);
  const QString path = Path(section, key);
  return store.contains(path) ? Decoded(store.value(path).toString()) : whenAbsent;
}

void QtSettings::Set(const std::string& application, const std::string& section, const std::string& key,
                     const std::string& value) {
  Open(application).setValue(Path(section, key), Encoded(value));
}

std::map<std::string, std::string> QtSettings::All(const std::string& application, const std::string& section) {
  QSettings store = Open(application);
  store.beginGroup(Encoded(section));
  std::map<std::string, std::string> pairs;
  for (const QString& key : store.childKeys()) pairs[Decoded(key)] = Decoded(store.value(key).toString());
  return pairs;
}

}  // namespace tesselink
