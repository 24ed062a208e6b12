#pragma once

#include "frequencystore/exchangereport.h"
#include "frequencystore/records/frequencystorelist.h"

namespace Velmara {

class CellText;

namespace csv {
class LineWatch;
}

/// The door to files: lists as XML documents and as CSV files, with one CSV format per list type.
///
/// The operations that give a result catch TallyException, trace it and give false, except where they say otherwise.
class VELMARA_EXPORT FileHandling
{
public:
    /// The list types, each with its CSV format.
    using ListType = FrequencyStoreListHelper::ListType;

    FileHandling();
    /// The same as a new one: there is no state.
    FileHandling(const FileHandling& other);
    /// Does nothing: there is no state.
    FileHandling& operator=(const FileHandling& other);
    virtual ~FileHandling();

    /// Appends what a file holds to a list, as ImportCSV or ImportXml does; drops the result.
    void ImportFrequencyStoreList(bool csv, QString const& file, FrequencyStoreList& list, ListType type);
    /// Writes a list as CSV of its type or, whatever its type, as XML.
    bool ExportFrequencyStoreList(bool csv, QString const& file, FrequencyStoreList& list, ListType type);
    /// Writes detection results as CSV or, turned into store entries, as XML. What the conversion throws passes
    /// through.
    bool ExportFrequencyStoreList(bool csv, QString const& file, DetectionResultList& list);
    /// Appends the rows of a CSV file; those ahead of a bad row stay in the list. Its logger is told where that is.
    bool ImportCSV(QString const& file, FrequencyStoreList& list, ListType type);
    /// Loads an XML document over what the list holds, as its LoadXml does; exceptions pass through.
    bool ImportXml(QString const& file, FrequencyStoreList& list);
    /// Whether a file loads as the XML document of a list.
    bool IsValidFormat(QString const& file);

    /// Reads a CSV file as ImportCSV does, and tells what was met on the way; rows ahead of a bad one stay in the list,
    /// those behind it too if bad rows are skipped.
    ImportReport ReadCSV(QString const& file, FrequencyStoreList& list, ListType type,
                         BadRows badRows = BadRows::EndReading);
    /// Writes a CSV file of the helper's list type, and tells what was met on the way. A file that was there stays as
    /// it was if writing fails.
    ExportReport WriteCSV(QString const& file, FrequencyStoreListHelper& helper);

private:
    struct Column;
    struct Columns;
    struct Format;
    struct Exchange;
    struct Found;

    bool ExportCSV(QString const& file, FrequencyStoreListHelper& helper);
    /// The same for a list that is at hand as XML text.
    bool ExportCSV(QString const& file, QString const& xml, ListType type);
    bool ExportXml(QString const& file, FrequencyStoreList& list);
    /// The same for a document that is at hand.
    bool ExportXml(QString const& file, QString const& text);

    void ExportNotePad(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ExportSuppress(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ExportTargetList(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ExportDataResults(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ExportNOI(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ExportDetectionConventional(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ExportMemoryScan(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ExportDetectionResult(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void ImportNotePad(QString const& file, FrequencyStoreList& list, ImportReport& report);
    void ImportSuppress(QString const& file, FrequencyStoreList& list, ImportReport& report);
    void ImportTargetList(QString const& file, FrequencyStoreList& list, ImportReport& report);
    void ImportDataResults(QString const& file, FrequencyStoreList& list, ImportReport& report);
    void ImportNOI(QString const& file, FrequencyStoreList& list, ImportReport& report);
    void ImportDetectionConventional(QString const& file, FrequencyStoreList& list, ImportReport& report);
    void ImportMemoryScan(QString const& file, FrequencyStoreList& list, ImportReport& report);

    static const Format& notePad();
    static const Format& suppress();
    static const Format& targetList();
    static const Format& dataResults();
    static const Format& detectionConventional();
    static const Format& memoryScan();

    static const Exchange& exchangeOf(ListType type);
    void writeFormat(QString const& file, const FrequencyStoreListHelper& helper, const Format& format,
                     ExportReport& report);
    static QVector<const Column*> columnsFor(const QVector<FrequencyStoreEntry>& entries, const Format& format);
    template <class Append>
    int appendLine(const QVector<const Column*>& columns, const Format& format, QString& text, Append append);
    void appendCell(const FrequencyStoreEntry& entry, const Column& column, QString& line, bool last);
    static void watchCell(const FrequencyStoreEntry& entry, const Column& column, QStringView text,
                          csv::LineWatch& watch);
    void readFormat(QString const& file, FrequencyStoreList& list, const Format& format, ImportReport& report);
    static QVector<Found> findColumns(const QStringList& names, const Format& format, ImportReport& report);
    static FrequencyStoreEntry readRow(const QVector<Found>& found, const QVector<QStringView>& cells,
                                       const Format& format, CsvCell& place, ImportReport& report);

    /// Appends a cell: the item, or "---" if it is empty. The last one ends the row.
    void SetCSVItem(QString& item, QString& line, bool last);
    void WriteToFile(QString const& file, QString const& text);

    void AppendType(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendComment(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAntenna(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendFrequency(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendBandwidth(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAnalogDemod(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendLevel(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendIFStep(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendActive(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAlarm(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAFC(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAttenuation(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendSquelchState(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendSquelchValue(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendChannelNo(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendDFMode(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAveraging(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendDFBandwidth(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendDFStep(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendLevelThreshold(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendPriority(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendProfileId(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendProfileName(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendSignalClass(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendThreatClass(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendTransmissionSystem(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendReason(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendConfidence(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendResultTime(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendStartTime(const FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendStopTime(const FrequencyStoreEntry& entry, QString& line, bool last);
};

} // namespace Velmara
