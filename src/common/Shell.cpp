#include "Shell.h"

#ifdef _WIN32
#include <windows.h>
// After <windows.h>, which it needs.
#include <shellapi.h>

#include <vector>
#else
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>
#endif

namespace mirvalde {

#ifdef _WIN32

// Windows reads a command line itself: a path with blanks and no quotes still starts the
// program it leads to. Both texts are in the ANSI code page, as the registry gave them.
bool DesktopShell::StartDetached(const std::string& commandLine) {
    if (commandLine.empty()) return false;
    std::vector<char> line(commandLine.begin(), commandLine.end());
    line.push_back('\0');
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

bool DesktopShell::Open(const std::string& address) {
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteA(nullptr, "open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    return result > 32;
}

#else

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

#endif

}  // namespace mirvalde
