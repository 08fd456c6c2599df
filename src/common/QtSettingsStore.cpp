#include "QtSettingsStore.h"

namespace mirvalde {
namespace {

QString Path(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + u'/' + QString::fromStdString(key);
}

}  // namespace

QtSettingsStore::QtSettingsStore(const QString& applicationName)
    : settings_(QSettings::NativeFormat, QSettings::UserScope, applicationName, applicationName) {}

std::string QtSettingsStore::Read(const std::string& section, const std::string& key,
                                  const std::string& fallback) const {
    // Another copy may have written since: read the file as it is now.
    settings_.sync();
    const QVariant value = settings_.value(Path(section, key));
    return value.isValid() ? value.toString().toStdString() : fallback;
}

bool QtSettingsStore::Write(const std::string& section, const std::string& key,
                            const std::string& value) {
    settings_.setValue(Path(section, key), QString::fromStdString(value));
    settings_.sync();
    return settings_.status() == QSettings::NoError;
}

}  // namespace mirvalde
