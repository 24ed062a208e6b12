#pragma once

#include "frequencystore/exchangereport.h"
#include "frequencystore/records/frequencystorelist.h"

namespace Velmara {

/// A column of a CSV format.
struct CsvColumnDescription
{
    QString name;   ///< in the header line
    QString member; ///< the path of the value that its cells hold, such as "FFM_Settings/Frequency"
    QString form;   ///< of the cells, in words
};

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
    /// The columns of a list type, in their order. Throws TallyException for one that has no CSV format.
    static QVector<CsvColumnDescription> DescribeCSV(ListType type);

private:
    bool ExportCSV(QString const& file, FrequencyStoreListHelper& helper);
    bool ExportXml(QString const& file, FrequencyStoreList& list);
};

} // namespace Velmara
