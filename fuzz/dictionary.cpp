#include "fuzz/dictionary.h"

#include "frequencystore/reflection.h"

#include <QtEndian>

#include <set>

namespace Velmara::fuzz {

namespace {

using Words = std::set<QByteArray>;

QByteArray bytesOf(quint32 tag)
{
    QByteArray bytes(sizeof tag, '\0');
    qToBigEndian(tag, bytes.data());
    return bytes;
}

void addWords(const RecordDescription& record, Words& words)
{
    words.insert({record.element.toUtf8(), bytesOf(record.id), record.version.toUtf8()});
    for (const MemberDescription& member : record.members) {
        words.insert({member.element.toUtf8(), bytesOf(member.tag)});
        for (const QString& name : member.names)
            words.insert(name.toUtf8());
    }
}

} // namespace

QByteArray dictionary()
{
    Words words;
    for (const RecordDescription* record : RecordDescriptions())
        addWords(*record, words);
    for (const char* markup :
         {"<!--", "-->", "<![CDATA[", "]]>", "<?", "?>", "&amp;", "&#65;", "/>", "</", "=\"", "\r\n"})
        words.insert(markup);
    words.erase(QByteArray()); // the version of those without one
    QByteArray text;
    for (const QByteArray& word : words)
        text += "\"\\x" + word.toHex(' ').replace(" ", "\\x") + "\"\n";
    return text;
}

} // namespace Velmara::fuzz
