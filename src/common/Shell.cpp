#include "Shell.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace mirvalde {

bool DesktopShell::StartDetached(const std::string& commandLine) {
    // A path that names a program is started whole, blanks and all; anything else is a
    // command line, its words split as a shell would.
    const QString text = QString::fromStdString(commandLine);
    if (QFileInfo(text).isFile()) return QProcess::startDetached(text, {});
    QStringList words = QProcess::splitCommand(text);
    if (words.isEmpty()) return false;
    const QString program = words.takeFirst();
    return QProcess::startDetached(program, words);
}

bool DesktopShell::Open(const std::string& address) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}

}  // namespace mirvalde
