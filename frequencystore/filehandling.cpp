#include "frequencystore/filehandling.h"

#include "base/exceptions.h"
#include "base/logger.h"
#include "base/savefile.h"
#include "frequencystore/csv/format.h"
#include "frequencystore/detectionresulthelper.h"
#include "frequencystore/readable.h"
#include "frequencystore/reported.h"
#include "frequencystore/trace.h"

using namespace TALLYFORM;

namespace Velmara {

namespace {

/// Traces; gives false, which is then the result of the operation that failed.
bool refuse(const QString& message, SourcePlace place = SourcePlace())
{
    trace(message, place);
    return false;
}

QString placeOf(const CsvCell& cell, const QString& file)
{
    QString place = file;
    if (cell.line > 0)
        place += QStringLiteral(", line %1").arg(QString::number(cell.line));
    if (!cell.column.isEmpty())
        place += QStringLiteral(", column '%1'").arg(cell.column);
    return place;
}

void writeText(const QString& file, const QString& text)
{
    QString reason;
    switch (SaveFile(file, text.toUtf8(), reason)) {
    case SaveResult::Saved: return;
    case SaveResult::NotOpened: throw TallyException(QStringLiteral("Can't open file for writing: '%1'").arg(file));
    default: throw TallyException(QStringLiteral("Can't write file: '%1' (%2)").arg(file, reason));
    }
}

} // namespace

FileHandling::FileHandling() = default;
FileHandling::FileHandling(const FileHandling&) = default;
FileHandling& FileHandling::operator=(const FileHandling&) = default;
FileHandling::~FileHandling() = default;

void FileHandling::ImportFrequencyStoreList(bool csv, QString const& file, FrequencyStoreList& list, ListType type)
{
    if (csv)
        ImportCSV(file, list, type);
    else
        list.LoadXml(file);
}

bool FileHandling::ExportFrequencyStoreList(bool csv, QString const& file, FrequencyStoreList& list, ListType type)
{
    FrequencyStoreListHelper helper;
    if (helper.IsValidListType(type))
        helper.SetListType(type);
    helper.SetFrequencyStoreList(list);
    return csv ? ExportCSV(file, helper) : ExportXml(file, helper.GetFrequencyStoreList());
}

bool FileHandling::ExportFrequencyStoreList(bool csv, QString const& file, DetectionResultList& list)
{
    FrequencyStoreList store;
    const DetectionResultHelper conversion(list, store);
    if (!csv)
        return ExportXml(file, store);
    try {
        writeText(file, conversion.GetCSVString());
        return true;
    } catch (const TallyFormException& failure) {
        return refuse(
            QStringLiteral("Error writing file %1. %2: %3").arg(file, failure.GetDetail(), failure.GetMessage()));
    }
}

bool FileHandling::ImportCSV(QString const& file, FrequencyStoreList& list, ListType type)
{
    if (type == ListType::DetectionResult)
        return refuse(QStringLiteral("detection results not imported"));
    if (type == ListType::TransducerList)
        return refuse(QStringLiteral("find application that actually needs transducer settings?"));
    if (!FrequencyStoreListHelper().IsValidListType(type))
        return true;
    const ImportReport report = ReadCSV(file, list, type);
    if (report.isComplete)
        return true;
    if (const auto logger = list.GetLogger()) // which may leave the list when it is told
        logger->Log(placeOf(report.failed, file) + QLatin1String(": ") + report.error);
    return refuse(QStringLiteral("Import: Cannot export frequency store to file as error %1").arg(report.error));
}

bool FileHandling::ImportXml(QString const& file, FrequencyStoreList& list) { return list.LoadXml(file); }

bool FileHandling::IsValidFormat(QString const& file)
{
    try {
        return FrequencyStoreList().LoadXml(file);
    } catch (const TallyException&) {
        return false;
    }
}

bool FileHandling::ExportCSV(QString const& file, FrequencyStoreListHelper& helper)
{
    const ListType type = helper.GetListType();
    if (!helper.IsValidListType(type))
        return refuse(QStringLiteral("ExportCSV: Cannot export frequency store to file as ListType is invalid!!"));
    if (type == ListType::TransducerList)
        return refuse(QStringLiteral("find application that actually needs transducer settings?"));
    const ExportReport report = WriteCSV(file, helper);
    return report.isComplete
        || refuse(QStringLiteral("ExportCSV: Cannot export frequency store to file as error %1").arg(report.error));
}

bool FileHandling::ExportXml(QString const& file, FrequencyStoreList& list)
{
    try {
        return list.SaveXml(file)
            || refuse(QStringLiteral("ExportXml:: Cannot export frequency store to file '%1'").arg(file));
    } catch (const TallyException& failure) {
        return refuse(
            QStringLiteral("ExportXml:: Cannot export frequency store to file as error %1").arg(failure.GetMessage()));
    }
}

ImportReport FileHandling::ReadCSV(QString const& file, FrequencyStoreList& list, ListType type, BadRows badRows)
{
    return reported<ImportReport>([&](ImportReport& report) {
        report.badRows = badRows;
        if (type == ListType::DetectionResult)
            throw TallyException(QStringLiteral("detection results not imported"));
        csv::read(csv::formatOf(type), file, list, report);
    });
}

ExportReport FileHandling::WriteCSV(QString const& file, FrequencyStoreListHelper& helper)
{
    return reported<ExportReport>([&](ExportReport& report) {
        const ListType type = readable(helper).GetListType();
        if (type != ListType::DetectionResult) {
            const FrequencyStoreList& list = readable(readable(helper).GetFrequencyStoreList());
            writeText(file, csv::write(csv::formatOf(type), list.GetFrequencyStoreEntry(), report));
            return;
        }
        const DetectionResultHelper conversion(helper.GetDetectionResultList(), helper.GetFrequencyStoreList());
        writeText(file, conversion.GetCSVString(report));
    });
}

QVector<CsvColumnDescription> FileHandling::DescribeCSV(ListType type)
{
    const auto describe = [](const auto& format) {
        QVector<CsvColumnDescription> descriptions;
        for (const auto& column : format.columns)
            descriptions.append({column.name, column.member, column.form});
        return descriptions;
    };
    return type == ListType::DetectionResult ? describe(csv::formatOfResults()) : describe(csv::formatOf(type));
}

} // namespace Velmara
