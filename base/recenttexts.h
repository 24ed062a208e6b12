#pragma once

#include <QString>

#include <array>
#include <string_view>

namespace TALLYFORM {

/// The texts of an input, of which short ones that came before are shared.
class RecentTexts
{
public:
    /// The text of UTF-8 without a byte order mark; never null.
    QString of(std::string_view utf8)
    {
        constexpr std::size_t longest = 24;
        if (utf8.empty())
            return QStringLiteral("");
        if (utf8.size() > longest)
            return QString::fromUtf8(utf8.data(), int(utf8.size()));
        const std::size_t place = utf8.size() + 7 * uchar(utf8.front()) + 31 * uchar(utf8.back());
        QString& recent = m_texts[place % m_texts.size()];
        if (recent != QLatin1String(utf8.data(), int(utf8.size()))) {
            QString text = QString::fromUtf8(utf8.data(), int(utf8.size()));
            if (text.size() != int(utf8.size())) // not ASCII, to which alone the comparison applies
                return text;
            recent = std::move(text);
        }
        return recent;
    }

private:
    std::array<QString, 64> m_texts;
};

} // namespace TALLYFORM
