#include "bench/floors.h"
#include "bench/require.h"

#include <QtEndian>

#include <cstring>

namespace Velmara::bench {

namespace {

/// A text as the stream holds it: behind its length.
QByteArray sized(const QByteArray& text)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(quint32(text.size()), bytes.data());
    return bytes + text;
}

/// The decimals of a number that has some; none is -1.
int precisionOf(const QString& text)
{
    bool isNumber = false;
    text.toDouble(&isNumber);
    const int point = text.indexOf(QLatin1Char('.'));
    return isNumber && point >= 0 ? text.size() - point - 1 : -1;
}

} // namespace

TaggedFloor::TaggedFloor(const std::vector<XmlToken>& tokens, const QByteArray& bytes) : m_bytes(bytes)
{
    int place = 0;
    for (const XmlToken& token : tokens) {
        const int precision = precisionOf(token.text);
        if (precision < 0 || token.isVersion())
            continue;
        const QByteArray text = token.text.toUtf8();
        place = m_bytes.indexOf(sized(text), place) + 4;
        require(place >= 4, "each number of the document stands in the tagged bytes, in the same order");
        m_numbers.push_back({token.text.toDouble(), precision, place});
    }
    require(write() == bytes, "the tagged floor writes the same bytes");
}

QByteArray TaggedFloor::write() const
{
    QByteArray bytes(m_bytes.size(), Qt::Uninitialized);
    std::memcpy(bytes.data(), m_bytes.constData(), size_t(m_bytes.size()));
    for (const Number& number : m_numbers) {
        const QByteArray text = QString::number(number.value, 'f', number.precision).toUtf8();
        std::memcpy(bytes.data() + number.place, text.constData(), size_t(text.size()));
    }
    return bytes;
}

} // namespace Velmara::bench
