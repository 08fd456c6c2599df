#pragma once

#include <QString>

namespace mirvalde {

// The folder of the running executable, where the game keeps its sounds and tips.
QString ExecutableFolder();

// The executable's file name without its extension: the program's name for its settings.
QString ExecutableBaseName();

// The decimal separator of the user's regional settings, as '.' or ','.
char UserDecimalSeparator();

}  // namespace mirvalde
