#include "frequencystore/filehandling.h"

#include "base/errorhandler.h"
#include "base/exceptions.h"
#include "base/files.h"
#include "frequencystore/csvformat.h"

#include <algorithm>
#include <iterator>

using namespace TALLYFORM;

namespace Velmara {

namespace {

/// Traces where the mask allows it; gives false, which is then the result of the operation that failed.
bool trace(const QString& message, int line)
{
    if (ErrorHandler::Instance() & ErrorHandler::traceBit)
        _Q_Trace(message, QStringLiteral("frequencystore/filehandling"), static_cast<unsigned short>(line));
    return false;
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

bool FileHandling::ImportCSV(QString const& file, FrequencyStoreList& list, ListType type)
{
    if (type == ListType::DetectionResult)
        return trace(QStringLiteral("detection results not imported"), __LINE__);
    if (type == ListType::TransducerList)
        return trace(QStringLiteral("find application that actually needs transducer settings?"), __LINE__);
    if (!FrequencyStoreListHelper().IsValidListType(type))
        return true;
    try {
        ReadCSV(file, list, type);
        return true;
    } catch (const TallyException& failure) {
        return trace(
            QStringLiteral("Import: Cannot export frequency store to file as error %1").arg(failure.GetMessage()),
            __LINE__);
    }
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
        return trace(QStringLiteral("ExportCSV: Cannot export frequency store to file as ListType is invalid!!"),
                     __LINE__);
    if (type == ListType::TransducerList)
        return trace(QStringLiteral("find application that actually needs transducer settings?"), __LINE__);
    try {
        WriteCSV(file, helper);
        return true;
    } catch (const TallyException& failure) {
        return trace(
            QStringLiteral("ExportCSV: Cannot export frequency store to file as error %1").arg(failure.GetMessage()),
            __LINE__);
    }
}

bool FileHandling::ExportCSV(QString const& file, QString const& xml, ListType type)
{
    try {
        FrequencyStoreListHelper helper;
        helper.GetFrequencyStoreList().SetXmlString(xml, false);
        if (helper.IsValidListType(type))
            helper.SetListType(type);
        return ExportCSV(file, helper);
    } catch (const TallyException& failure) {
        return trace(QStringLiteral("Cannot export frequency store to file as error %1").arg(failure.GetMessage()),
                     __LINE__);
    }
}

bool FileHandling::ExportXml(QString const& file, FrequencyStoreList& list)
{
    try {
        return list.SaveXml(file)
            || trace(QStringLiteral("ExportXml:: Cannot export frequency store to file '%1'").arg(file), __LINE__);
    } catch (const TallyException& failure) {
        return trace(
            QStringLiteral("ExportXml:: Cannot export frequency store to file as error %1").arg(failure.GetMessage()),
            __LINE__);
    }
}

bool FileHandling::ExportXml(QString const& file, QString const& text)
{
    try {
        WriteToFile(file, text);
        return true;
    } catch (const TallyException& failure) {
        return trace(
            QStringLiteral("ExportXml:: Cannot export frequency store to file as error %1").arg(failure.GetMessage()),
            __LINE__);
    }
}

const FileHandling::Exchange* FileHandling::exchangeOf(ListType type)
{
    static constexpr Exchange exchanges[] = {
        {ListType::MemoryScan, &FileHandling::ExportMemoryScan, &FileHandling::ImportMemoryScan},
    };
    const auto exchange = std::find_if(std::begin(exchanges), std::end(exchanges),
                                       [type](const Exchange& candidate) { return candidate.type == type; });
    if (exchange == std::end(exchanges))
        throw TallyException(QStringLiteral("There is no CSV format for the list type '%1'.")
                                 .arg(FrequencyStoreListHelper().ListTypeToName(type)));
    return exchange;
}

void FileHandling::ReadCSV(QString const& file, FrequencyStoreList& list, ListType type)
{
    (this->*exchangeOf(type)->read)(file, list);
}

void FileHandling::WriteCSV(QString const& file, FrequencyStoreListHelper& helper)
{
    (this->*exchangeOf(helper.GetListType())->write)(file, helper);
}

void FileHandling::SetCSVItem(QString& item, QString& line, bool last)
{
    line += item.isEmpty() ? QStringLiteral("---") : item;
    line += QLatin1Char(';');
    if (last)
        line += QLatin1Char('\n');
}

void FileHandling::WriteToFile(QString const& file, QString const& text)
{
    QString lines = text;
#ifdef Q_OS_WIN
    lines.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
#endif
    QString reason;
    switch (SaveFile(file, lines.toUtf8(), reason)) {
    case SaveResult::Saved: return;
    case SaveResult::NotOpened: throw TallyException(QStringLiteral("Can't open file for writing: '%1'").arg(file));
    case SaveResult::NotWritten: throw TallyException(QStringLiteral("Can't write file: '%1' (%2)").arg(file, reason));
    }
}

} // namespace Velmara
