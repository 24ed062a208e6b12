#pragma once

#include "base/tallybase_export.h"

#include <QDateTime>
#include <QString>
#include <QStringView>

namespace TALLYFORM {

/// Date-times as text, in the one form "yyyy-MM-ddThh:mm:ss,zzzZ" and always in UTC; the two directions are inverse.
class TALLYBASE_EXPORT Converters
{
public:
    Converters() = delete;

    /// The number of characters of the form.
    static constexpr int TextLength = 24;

    /// The text of a date-time; empty for a null or invalid one and for years outside 1 to 9999.
    static QString ToString(const QDateTime& time);
    /// Writes that text as ASCII where there is room for TextLength characters, and gives its end.
    static char* Put(char* to, const QDateTime& time);
    ///@{
    /// The date-time of a text; null for a text that is not exactly in the form or names no real date and time.
    static QDateTime ToDateTime(const QString& text);
    static QDateTime ToDateTime(QStringView text);
    static QDateTime ToDateTime(const char* utf8, int size);
    ///@}
};

} // namespace TALLYFORM
