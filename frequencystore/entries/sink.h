#pragma once

#include "base/exceptions.h"
#include "base/filesaver.h"
#include "frequencystore/entries/source.h"
#include "frequencystore/listwriter.h"

#include <QtEndian>

namespace Velmara {

/// Where the items of a list go.
template <class List, class Item> class ListSink
{
public:
    virtual ~ListSink() = default;
    /// Writes what stands ahead of the items. The list has none; but it is marked as holding them, if it will.
    virtual void begin(const List& list) = 0;
    /// Writes the item of that index.
    virtual void put(const List& list, const Item& item, qint64 index) = 0;
    /// Writes what stands behind the items, and saves the file.
    virtual void end(const List& list) = 0;
};

/// The file that is written.
class Output
{
public:
    explicit Output(const QString& path) : m_path(path), m_saver(path) {}

    void write(const QByteArray& bytes)
    {
        m_saver.write(bytes.constData(), bytes.size());
        m_size += bytes.size();
    }
    /// Writes a word, most significant byte first, over what was written.
    void rewrite(qint64 at, quint32 word)
    {
        const quint32 ordered = qToBigEndian(word);
        m_saver.rewrite(at, reinterpret_cast<const char*>(&ordered), sizeof ordered);
    }
    qint64 size() const { return m_size; }
    /// Throws TallyException if the file cannot be saved.
    void save()
    {
        QString reason;
        if (m_saver.finish(reason) != TALLYFORM::SaveResult::Saved)
            throw TALLYFORM::TallyException(TALLYFORM::Fault{
                .kind = TALLYFORM::Fault::Kind::Unwritable, .place = {.source = m_path}, .message = reason});
    }

private:
    const QString m_path;
    TALLYFORM::FileSaver m_saver;
    qint64 m_size = 0;
};

} // namespace Velmara
