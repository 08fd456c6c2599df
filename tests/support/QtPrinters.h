#pragma once

#include <QString>
#include <ostream>

// Readable failures: a QString prints as its text, not as a list of code units.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
