#include "frequencystore/csvtext.h"

namespace Velmara::csv {

void LineWatch::cell(QLatin1String column, QStringView text)
{
    bool isDamaged = false;
    for (const QChar c : text) {
        isDamaged |= c == u';' || c == u'\n' || c == u'\r';
        m_breaks += c == u'\n';
    }
    if (isDamaged)
        m_report.damaged.append({m_line, column, text.toString()});
}

void LineWatch::endLine(int length)
{
    if (length >= maxLineLength)
        m_report.damaged.append({m_line, {}, {}});
    m_line += 1 + m_breaks;
    m_breaks = 0;
    ++m_report.entries;
}

} // namespace Velmara::csv
