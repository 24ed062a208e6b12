#include "frequencystore/csv/text.h"

#include <algorithm>

namespace Velmara::csv {

void LineWatch::damage(CsvDamage damage, QLatin1String column, QStringView text)
{
    m_report.damaged.append({{m_line, column, text.toString()}, damage});
}

void LineWatch::cell(QLatin1String column, QStringView text)
{
    bool breaksLine = false, hasSurrogates = false;
    for (const QChar c : text) {
        breaksLine |= c == u';' || c == u'\n' || c == u'\r';
        hasSurrogates |= c.isSurrogate();
    }
    if (breaksLine) {
        m_breaks += int(std::count(text.begin(), text.end(), u'\n'));
        damage(CsvDamage::BrokenLine, column, text);
    }
    if (hasSurrogates && !text.isValidUtf16())
        damage(CsvDamage::NoCharacter, column, text);
}

void LineWatch::endLine(int length)
{
    if (length >= maxLineLength)
        damage(CsvDamage::LongLine, QLatin1String(), {});
    m_line += 1 + m_breaks;
    m_breaks = 0;
    ++m_report.entries;
}

} // namespace Velmara::csv
