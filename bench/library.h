#pragma once

/// What the library is asked to do. Each operation gives its result, for the time of which it is measured.

#include "bench/require.h"
#include "bench/workloads.h"

#include <QDataStream>

namespace Velmara::bench {

template <class R> bool saveXml(const R& record, const QString& path)
{
    require(record.SaveXml(path), "an XML document is written");
    return true;
}

template <class R> R loadXml(const QString& path)
{
    R record;
    require(record.LoadXml(path), "an XML document is read");
    return record;
}

template <class R> QByteArray writeTagged(const R& record) { return record.GetBinaryRepresentationAsQByteArray(); }

template <class R> R readTagged(const QByteArray& bytes)
{
    R record;
    require(record.SetBinaryRepresentation(bytes), "a tagged stream is read");
    return record;
}

template <class R> QByteArray writePacked(const R& record)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    record.GetVersionSpecificBinaryWithoutValidation(stream);
    return bytes;
}

template <class R> R readPacked(const QByteArray& bytes)
{
    R record;
    QDataStream stream(bytes);
    record.SetVersionSpecificBinaryWithoutValidation(stream);
    return record;
}

template <class R> R copy(const R& record)
{
    R other = record;
    touch(other);
    return other;
}

template <class R> bool check(const R& record)
{
    record.Check();
    return true;
}

template <class R> bool isEqual(const R& left, const R& right)
{
    require(left == right, "equal lists are equal");
    return true;
}

inline bool exportCsv(FrequencyStoreList& list, const QString& path)
{
    require(FileHandling().ExportFrequencyStoreList(true, path, list, FileHandling::ListType::MemoryScan),
            "a CSV file is written");
    return true;
}

inline FrequencyStoreList importCsv(const QString& path)
{
    FrequencyStoreList list;
    require(FileHandling().ImportCSV(path, list, FileHandling::ListType::MemoryScan), "a CSV file is read");
    return list;
}

inline FrequencyStoreList convert(DetectionResultList& results)
{
    FrequencyStoreList list;
    const DetectionResultHelper conversion(results, list);
    return list;
}

inline QString csvOf(DetectionResultList& results)
{
    FrequencyStoreList list;
    return DetectionResultHelper(results, list).GetCSVString();
}

} // namespace Velmara::bench
