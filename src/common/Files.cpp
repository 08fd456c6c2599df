#include "Files.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>

namespace mirvalde {

QString ExecutableFolder() {
    return QCoreApplication::applicationDirPath();
}

QString ExecutableBaseName() {
    return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
}

char UserDecimalSeparator() {
    // The game knows two notations; any separator other than the comma reads as the point.
    return QLocale::system().decimalPoint() == QStringLiteral(",") ? ',' : '.';
}

}  // namespace mirvalde
