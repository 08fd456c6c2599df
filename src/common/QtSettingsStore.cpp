#include "QtSettingsStore.h"

namespace mirvalde {
namespace {

QString Path(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + u'/' + QString::fromStdString(key);
}

std::unique_ptr<QSettings> Open(const QString& name) {
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, name, name);
}

}  // namespace

QtSettingsStore::QtSettingsStore(const QString& applicationName)
    : name_(applicationName), settings_(Open(applicationName)) {}

std::string QtSettingsStore::Read(const std::string& section, const std::string& key,
                                  const std::string& fallback) const {
    // Another copy may have written since: read the file as it is now.
    settings_->sync();
    const QVariant value = settings_->value(Path(section, key));
    if (!value.isValid()) return fallback;
    // A comma typed by hand without quotes makes a list of the text, with the blanks after the
    // commas lost: it is one text all the same, written as a name would be.
    if (value.typeId() == QMetaType::QStringList) {
        return value.toStringList().join(QStringLiteral(", ")).toStdString();
    }
    return value.toString().toStdString();
}

bool QtSettingsStore::Write(const std::string& section, const std::string& key,
                            const std::string& value) {
    const QString path = Path(section, key);
    const QVariant before = settings_->value(path);
    settings_->setValue(path, QString::fromStdString(value));
    settings_->sync();
    if (settings_->status() == QSettings::FormatError) {
        // The file was not settings at all, garbage or edited past reading, and Qt keeps saying
        // so after writing it again whole, with the new value and what could be read of the
        // rest. Opened afresh, it tells whether that write went through.
        settings_ = Open(name_);
    }
    if (settings_->status() == QSettings::NoError) return true;
    // Not written: the value is put back, so that what is read next is what the file holds.
    if (before.isValid()) {
        settings_->setValue(path, before);
    } else {
        settings_->remove(path);
    }
    return false;
}

}  // namespace mirvalde
