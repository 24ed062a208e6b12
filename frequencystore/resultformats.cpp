/// The CSV formats of lists of results: with a lock state, or with the time span of a detection.

#include "base/converters.h"
#include "frequencystore/csvformat.h"

using TALLYFORM::Converters;

namespace Velmara {

namespace {

bool hasStart(const FrequencyStoreEntry& entry)
{
    char text[Converters::TextLength];
    return Converters::Put(text, readable(detectionOf(entry)).GetStartTime()) != text;
}

/// A stop time says nothing without the start, so it is passed over where that is absent.
void readStop(FrequencyStoreEntry& entry, CellText& cell)
{
    if (detectionOf(std::as_const(entry)).IsStartTimeSet())
        detectionOf(entry).SetStopTime(cell.time());
    else
        cell.passOver();
}

bool isStopPassedOver(const FrequencyStoreEntry& entry)
{
    return detectionOf(entry).IsStopTimeSet() && !hasStart(entry);
}

} // namespace

// clang-format off
const FileHandling::Format& FileHandling::dataResults()
{
    static const Format format{notePad().columns + QVector<Column>{
        VELMARA_TEXT_COLUMN     ("LockState",  AppendReason,     resultOf(entry), Reason),
        VELMARA_TIME_COLUMN     ("SignalTime", AppendResultTime, resultOf(entry), ResultTime),
        VELMARA_UNGUARDED_COLUMN("Confidence", AppendConfidence, resultOf(entry), Confidence, cell.integer()),
    }};
    return format;
}

const FileHandling::Format& FileHandling::detectionConventional()
{
    Column stop = VELMARA_TIME_COLUMN("StopTime", AppendStopTime, detectionOf(entry), StopTime);
    stop.read = readStop;
    stop.isPassedOver = isStopPassedOver;
    static const Format format{suppress().columns + QVector<Column>{
        VELMARA_COLUMN     ("Level",     AppendLevel,     settingsOf(entry), Level, cell.number()),
        VELMARA_TIME_COLUMN("StartTime", AppendStartTime, detectionOf(entry), StartTime),
        stop,
    }};
    return format;
}
// clang-format on

void FileHandling::ExportDataResults(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report)
{
    writeFormat(file, helper, dataResults(), report);
}

void FileHandling::ImportDataResults(QString const& file, FrequencyStoreList& list, ImportReport& report)
{
    readFormat(file, list, dataResults(), report);
}

void FileHandling::ExportDetectionConventional(QString const& file, FrequencyStoreListHelper& helper,
                                               ExportReport& report)
{
    writeFormat(file, helper, detectionConventional(), report);
}

void FileHandling::ImportDetectionConventional(QString const& file, FrequencyStoreList& list, ImportReport& report)
{
    readFormat(file, list, detectionConventional(), report);
}

} // namespace Velmara
