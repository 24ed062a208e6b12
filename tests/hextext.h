#pragma once

#include <QByteArray>

/// The bytes of a text of hexadecimal digits with comments behind '#'.
inline QByteArray fromHexText(const QByteArray& text)
{
    QByteArray digits;
    for (const QByteArray& line : text.split('\n'))
        digits += line.left(line.indexOf('#'));
    return QByteArray::fromHex(digits);
}
