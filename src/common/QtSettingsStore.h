#pragma once

#include <QSettings>
#include <memory>

#include "SettingsStore.h"

namespace mirvalde {

// The user's settings of this program: on Linux an INI file under the user's configuration
// folder, named after the executable; on Windows the current user's registry.
class QtSettingsStore final : public SettingsStore {
  public:
    explicit QtSettingsStore(const QString& applicationName);

    std::string Read(const std::string& section, const std::string& key,
                     const std::string& fallback) const override;
    bool Write(const std::string& section, const std::string& key,
               const std::string& value) override;

    QString FileName() const { return settings_->fileName(); }

  private:
    QString name_;
    mutable std::unique_ptr<QSettings> settings_;
};

}  // namespace mirvalde
