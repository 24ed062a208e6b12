/// The CSV formats of lists of results: with a lock state, or with the time span of a detection.

#include "frequencystore/csvformat.h"

namespace Velmara {

namespace {

/// A stop time says nothing without the start, so it is passed over where that is absent.
void readStop(FrequencyStoreEntry& entry, CellText& cell)
{
    if (std::as_const(entry).GetDetection().IsStartTimeSet())
        entry.GetDetection().SetStopTime(cell.time());
    else
        cell.passOver();
}

} // namespace

// clang-format off
const FileHandling::Format& FileHandling::dataResults()
{
    static const Format format{notePad().columns + QVector<Column>{
        VELMARA_COLUMN          ("LockState",  AppendReason,     entry.GetResultList().SetReason(cell.text())),
        VELMARA_COLUMN          ("SignalTime", AppendResultTime, entry.GetResultList().SetResultTime(cell.time())),
        VELMARA_UNGUARDED_COLUMN("Confidence", AppendConfidence, entry.GetResultList().SetConfidence(cell.integer())),
    }};
    return format;
}

const FileHandling::Format& FileHandling::detectionConventional()
{
    static const Format format{suppress().columns + QVector<Column>{
        VELMARA_COLUMN("Level",     AppendLevel,     entry.GetFFM_Settings().SetLevel(cell.number())),
        VELMARA_COLUMN("StartTime", AppendStartTime, entry.GetDetection().SetStartTime(cell.time())),
        VELMARA_COLUMN("StopTime",  AppendStopTime,  readStop(entry, cell)),
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
