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
    const QString text = QString::fromStdString(value);
    const QVariant before = settings_->value(path);
    settings_->setValue(path, text);
    settings_->sync();
    if (settings_->status() == QSettings::NoError) return true;
    // Qt's status keeps every error met since the file was opened, in reading it too: a file of
    // garbage, or one that could not be read, is written again whole all the same. Opened
    // afresh, the file tells whether this value reached it.
    std::unique_ptr<QSettings> now = Open(name_);
    const bool written = now->status() == QSettings::NoError && now->value(path).toString() == text;
    // Not written: the value is put back, so that nothing writes it behind the player's back.
    if (!written && before.isValid()) settings_->setValue(path, before);
    if (!written && !before.isValid()) settings_->remove(path);
    settings_ = std::move(now);
    return written;
}

}  // namespace mirvalde
