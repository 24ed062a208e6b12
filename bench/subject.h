#pragma once

/// What the library is asked to do with a list, and the floors of that. Each operation gives its result, for the time
/// of which it is measured.

#include "bench/floors.h"
#include "bench/require.h"
#include "bench/workloads.h"

#include "frequencystore/kernel/model/walk.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>

#include <functional>
#include <optional>

namespace Velmara::bench {

/// A value that is made when it is first asked for.
template <class T> class Lazy
{
public:
    template <class Make> Lazy(Make make) : m_make(make) {}

    T& operator*()
    {
        if (!m_value)
            m_value.emplace(m_make());
        return *m_value;
    }
    T* operator->() { return &**this; }

private:
    std::function<T()> m_make;
    std::optional<T> m_value;
};

/// Gives a record and all below it data of their own, which they may have shared with another.
template <class R> void detach(R& record)
{
    if (!kernel::Record<R>::peekData(record))
        return;
    kernel::visit(kernel::Record<R>::ownData(record), []<class T>(const kernel::Member&, T& field) {
        if constexpr (kernel::IsRecord<T>)
            detach(field);
        else if constexpr (kernel::isList<T>)
            for (auto& item : field)
                if constexpr (kernel::IsRecord<typename T::value_type>)
                    detach(item);
    });
}

/// A list as an ordinary program has it, that is read from a document, with files in a folder.
template <class R> class Subject
{
public:
    Subject(const R& made, const QDir& folder, const QString& name)
        : m_xml(folder.filePath(name + QStringLiteral(".xml"))), m_output(folder.filePath(QStringLiteral("output")))
    {
        require(made.SaveXml(m_xml), "an XML document is written");
        m_list = loadXml();
    }
    Subject(const Subject&) = delete;

    R& list() { return m_list; }
    const QString& xml() const { return m_xml; }
    const QString& output() const { return m_output; }
    const PackedFloor& packedFloor() { return *m_packedFloor; }

    bool saveXml() { return save(m_list); }
    bool saveXmlUnchecked() { return save(*m_unchecked); }
    R loadXml()
    {
        R list;
        require(list.LoadXml(m_xml), "an XML document is read");
        return list;
    }
    R readXml()
    {
        R list;
        require(list.SetXmlString(*m_text, true), "an XML text is read");
        return list;
    }
    QByteArray writeTagged() { return m_list.GetBinaryRepresentationAsQByteArray(); }
    R readTagged()
    {
        R list;
        require(list.SetBinaryRepresentation(*m_tagged), "a tagged stream is read");
        return list;
    }
    QByteArray writePacked()
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        m_list.GetVersionSpecificBinaryWithoutValidation(stream);
        return bytes;
    }
    R readPacked()
    {
        R list;
        QDataStream stream(*m_packed);
        list.SetVersionSpecificBinaryWithoutValidation(stream);
        return list;
    }
    R copy()
    {
        R other = m_list;
        detach(other);
        return other;
    }
    bool compare() { return require(m_list == *m_equal, "equal lists are equal"); }
    bool check() { return m_list.Check(), true; }

    Tally loadXmlFloor() { return m_xmlFloor->load(m_xml); }
    Tally readXmlFloor() { return m_xmlFloor->read(*m_text); }
    bool saveXmlFloor() { return m_xmlFloor->save(); }
    QByteArray writeTaggedFloor() { return m_taggedFloor->write(); }
    std::string writePackedFloor() { return packedFloor().write(); }
    auto readPackedFloor() { return packedFloor().read(packedFloor().bytes()); }

    /// The sizes of the forms in bytes.
    double xmlSize() { return double(QFileInfo(m_xml).size()); }
    double taggedSize() { return m_tagged->size(); }
    double packedSize() { return m_packed->size(); }
    double messageSize() { return double(packedFloor().bytes().size()); }

private:
    bool save(const R& list) { return require(list.SaveXml(m_output), "an XML document is written"); }

    QString m_xml;
    QString m_output;
    R m_list;
    Lazy<QString> m_text = [this] { return QString::fromUtf8(contentOf(m_xml)); };
    Lazy<R> m_unchecked = [this] {
        R list = loadXml();
        list.SetValidate(false);
        return list;
    };
    Lazy<R> m_equal = [this] { return readPacked(); };
    Lazy<QByteArray> m_tagged = [this] { return writeTagged(); };
    Lazy<QByteArray> m_packed = [this] { return writePacked(); };
    Lazy<XmlFloor> m_xmlFloor = [this] { return XmlFloor(m_xml, m_output); };
    Lazy<TaggedFloor> m_taggedFloor = [this] { return TaggedFloor(m_xmlFloor->tokens(), *m_tagged); };
    Lazy<PackedFloor> m_packedFloor = [this] { return PackedFloor(m_list, m_xmlFloor->tokens()); };
};

/// A memory scan list, which goes through CSV files too.
class MemoryScan : public Subject<FrequencyStoreList>
{
public:
    MemoryScan(int entries, const QDir& folder, const QString& name)
        : Subject(memoryScan(entries), folder, name), m_csv(folder.filePath(name + QStringLiteral(".csv"))),
          m_entries(entries)
    {}

    bool exportCsv() { return write(output()); }
    FrequencyStoreList importCsv()
    {
        FrequencyStoreList list;
        require(FileHandling().ImportCSV(*m_file, list, type), "a CSV file is read");
        require(std::as_const(list).GetFrequencyStoreEntry().size() == m_entries, "a CSV file brings all entries");
        return list;
    }
    bool exportCsvFloor() { return m_floor->save(); }
    qint64 importCsvFloor() { return m_floor->load(); }
    double csvSize() { return double(QFileInfo(*m_file).size()); }

private:
    static constexpr auto type = FileHandling::ListType::MemoryScan;

    bool write(const QString& path)
    {
        return require(FileHandling().ExportFrequencyStoreList(true, path, list(), type), "a CSV file is written");
    }

    QString m_csv;
    int m_entries;
    Lazy<QString> m_file = [this] { return write(m_csv), m_csv; };
    Lazy<CsvFloor> m_floor = [this] { return CsvFloor(*m_file, output()); };
};

} // namespace Velmara::bench
