#include "Shell.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

namespace mirvalde {

bool DesktopShell::StartDetached(const std::string& commandLine) {
    QStringList words = QProcess::splitCommand(QString::fromStdString(commandLine));
    if (words.isEmpty()) return false;
    const QString program = words.takeFirst();
    return QProcess::startDetached(program, words);
}

bool DesktopShell::Open(const std::string& address) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}

}  // namespace mirvalde
