#include "fuzz/dictionary.h"

#include "frequencystore/kernel/walk.h"
#include "frequencystore/records/allrecords.h"

#include <QtEndian>

#include <set>

using namespace Velmara::kernel;

namespace Velmara::fuzz {

namespace {

using Words = std::set<QByteArray>;

QByteArray bytesOf(quint32 tag)
{
    QByteArray bytes(sizeof tag, '\0');
    qToBigEndian(tag, bytes.data());
    return bytes;
}

template <class R> void addWords(Words& words)
{
    const R record;
    words.insert(R::GetStaticObjectName().toUtf8());
    words.insert(bytesOf(quint32(R::GetId())));
    if constexpr (IsVersioned<R>)
        words.insert(R::schemaVersion().toUtf8());
    visit(Record<R>::layout(record), [&](const Member& m, const auto&) {
        words.insert(QByteArray(m.name.data(), m.name.size()));
        words.insert(bytesOf(m.tag));
        if (m.names)
            for (const QString& name : m.names())
                words.insert(name.toUtf8());
    });
}

template <class... R> void addAllWords(Words& words, RecordTypes<R...>) { (addWords<R>(words), ...); }

} // namespace

QByteArray dictionary()
{
    Words words;
    addAllWords(words, AllRecords());
    QByteArray text;
    for (const QByteArray& word : words)
        text += "\"\\x" + word.toHex(' ').replace(" ", "\\x") + "\"\n";
    return text;
}

} // namespace Velmara::fuzz
