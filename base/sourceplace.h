#pragma once

#include <QString>

/// A place in the source, for traces: by default the one where it is made.
struct SourcePlace
{
    const char* file;
    int line;

    constexpr SourcePlace(const char* inFile = __builtin_FILE(), int atLine = __builtin_LINE())
        : file(inFile), line(atLine)
    {}

    /// The file with its folder, as "base/xmldocument.cpp".
    QString name() const { return QString::fromUtf8(file).section(QLatin1Char('/'), -2); }
};
