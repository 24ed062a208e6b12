#include "frequencystore/csv/rowwriter.h"

namespace Velmara::csv {

namespace {

template <class R> QString writeAll(const Format<R>& format, const QVector<R>& records, ExportReport& report)
{
    NeededColumns<R> needed(format);
    for (const R& record : records)
        needed.note(record);
    RowWriter writer(format, needed.columns(), report);
    for (const R& record : records)
        writer.put(record);
    return writer.text();
}

} // namespace

QString write(const Format<FrequencyStoreEntry>& format, const QVector<FrequencyStoreEntry>& entries,
              ExportReport& report)
{
    return writeAll(format, entries, report);
}

QString write(const Format<DetectionResult>& format, const QVector<DetectionResult>& results, ExportReport& report)
{
    return writeAll(format, results, report);
}

} // namespace Velmara::csv
