#pragma once

#include "frequencystore/records/frequencystorelist.h"

namespace Velmara {

/// The door to files: lists as XML documents and as CSV files, with one CSV format per list type.
///
/// The operations that give a result catch TallyException, trace it and give false, except where they say otherwise.
class VELMARA_EXPORT FileHandling
{
public:
    using ListType = FrequencyStoreListHelper::ListType;

    FileHandling();
    FileHandling(const FileHandling& other);
    FileHandling& operator=(const FileHandling& other);
    virtual ~FileHandling();

    /// Appends what a file holds to a list, as ImportCSV or ImportXml does; drops the result.
    void ImportFrequencyStoreList(bool csv, QString const& file, FrequencyStoreList& list, ListType type);
    /// Writes a list as CSV of its type or, whatever its type, as XML.
    bool ExportFrequencyStoreList(bool csv, QString const& file, FrequencyStoreList& list, ListType type);
    /// Appends the rows of a CSV file; those ahead of a bad row stay in the list.
    bool ImportCSV(QString const& file, FrequencyStoreList& list, ListType type);
    /// Loads an XML document; its exceptions pass through.
    bool ImportXml(QString const& file, FrequencyStoreList& list);
    /// Whether a file loads as the XML document of a list.
    bool IsValidFormat(QString const& file);

    /// As ImportCSV, but throws TallyException, which tells file and line as its origin.
    void ReadCSV(QString const& file, FrequencyStoreList& list, ListType type);
    /// Writes a CSV file; throws TallyException. A file that was there stays as it was if writing fails.
    void WriteCSV(QString const& file, FrequencyStoreListHelper& helper);

private:
    struct Column;
    struct Format;
    struct Formats;
    struct Exchange;
    struct Found;

    bool ExportCSV(QString const& file, FrequencyStoreListHelper& helper);
    bool ExportCSV(QString const& file, QString const& xml, ListType type);
    bool ExportXml(QString const& file, FrequencyStoreList& list);
    bool ExportXml(QString const& file, QString const& text);

    void ExportMemoryScan(QString const& file, FrequencyStoreListHelper& helper);
    void ImportMemoryScan(QString const& file, FrequencyStoreList& list);

    static const Exchange* exchangeOf(ListType type);
    static QVector<const Column*> columnsFor(const QVector<FrequencyStoreEntry>& entries, const Format& format);
    void appendRow(FrequencyStoreEntry& entry, const QVector<const Column*>& columns, QString& text);
    void writeFormat(QString const& file, const FrequencyStoreList& list, const Format& format);
    void readFormat(QString const& file, FrequencyStoreList& list, const Format& format);
    static FrequencyStoreEntry readRow(const QVector<Found>& found, int row, const Format& format);

    /// Appends a cell: the item, or "---" if it is empty. The last one ends the row.
    void SetCSVItem(QString& item, QString& line, bool last);
    void WriteToFile(QString const& file, QString const& text);

    void AppendType(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendComment(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAntenna(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendFrequency(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendBandwidth(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAnalogDemod(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendLevel(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendIFStep(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendActive(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAlarm(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAFC(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAttenuation(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendSquelchState(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendSquelchValue(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendChannelNo(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendDFMode(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendAveraging(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendDFBandwidth(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendDFStep(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendLevelThreshold(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendPriority(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendProfileId(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendProfileName(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendSignalClass(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendThreatClass(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendTransmissionSystem(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendReason(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendConfidence(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendResultTime(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendStartTime(FrequencyStoreEntry& entry, QString& line, bool last);
    void AppendStopTime(FrequencyStoreEntry& entry, QString& line, bool last);
};

} // namespace Velmara
