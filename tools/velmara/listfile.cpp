#include "listfile.h"

#include "messages.h"

#include <base/files.h>

#include <QDataStream>
#include <QFile>
#include <QFileInfo>

using namespace TALLYFORM;
using namespace Velmara;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

/// Keeps the reason why an operation gave false.
class LastReason : public Logger
{
public:
    void Log(const QString& message) override { m_reason = message; }
    const QString& reason() const { return m_reason; }

private:
    QString m_reason;
};

/// Runs an operation that gives false on failure and tells the reason to the list's logger.
template <class Operation> void demand(const ITallyObject& list, Operation operation)
{
    const auto logger = std::make_shared<LastReason>();
    list.SetLogger(logger);
    const bool isDone = operation();
    list.ResetLogger();
    if (!isDone)
        throw TallyException(logger->reason());
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    QByteArray content;
    QString reason;
    if (!file.open(QIODevice::ReadOnly))
        throw TallyException(file.errorString());
    if (!ReadFile(file, content, reason))
        throw TallyException(reason);
    return content;
}

template <class List> bool readPacked(const QString& path, List& list)
{
    QDataStream stream(bytesOf(path));
    list.SetVersionSpecificBinaryWithoutValidation(stream);
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        throw BinaryParsingException(QStringLiteral("This is no packed list, or a damaged one."));
    return true;
}

/// Reads the forms that all records have.
template <class List> void readRecord(const QString& path, List& list)
{
    const auto read = [&](List& fresh) {
        switch (formOf(path)) {
        case Form::Xml: return fresh.LoadXml(path);
        case Form::Tagged: return fresh.LoadBinary(path);
        case Form::Packed: return readPacked(path, fresh);
        case Form::Csv: break;
        }
        throw TallyException(QStringLiteral("This list type cannot be read from CSV."));
    };
    demand(list, [&] { return LoadWhole(list, read); });
}

void readCsv(const QString& path, FrequencyStoreListHelper& helper, QStringList& warnings)
{
    ImportReport report;
    LoadWhole(helper.GetFrequencyStoreList(), [&](FrequencyStoreList& fresh) {
        report = FileHandling().ReadCSV(path, fresh, std::as_const(helper).GetListType());
        return report.isComplete;
    });
    warnings += warningsOf(path, report);
    if (!report.isComplete)
        throw TallyException(describe(path, report));
}

QByteArray packedForm(const FrequencyStoreList& list)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    list.GetVersionSpecificBinaryWithoutValidation(stream);
    return bytes;
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QString reason;
    if (SaveFile(path, bytes, reason) != SaveResult::Saved)
        throw TallyException(QStringLiteral("%1: %2").arg(path, reason));
}

void writeRecord(const QString& path, Form form, const FrequencyStoreList& list)
{
    if (list.GetFrequencyStoreEntry().isEmpty())
        throw TallyException(QStringLiteral("%1: a list without entries can only be written as CSV.").arg(path));
    switch (form) {
    case Form::Xml: demand(list, [&] { return list.SaveXml(path); }); break;
    case Form::Tagged: writeBytes(path, list.GetBinaryRepresentationAsQByteArray()); break;
    default: writeBytes(path, packedForm(list));
    }
}

void writeCsv(const QString& path, FrequencyStoreListHelper& helper, QStringList& warnings)
{
    const ExportReport report = FileHandling().WriteCSV(path, helper);
    if (!report.isComplete)
        throw TallyException(report.error);
    warnings += warningsOf(path, report);
}

} // namespace

Form formOf(const QString& path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("csv"))
        return Form::Csv;
    if (extension == QLatin1String("xml"))
        return Form::Xml;
    if (extension == QLatin1String("tagged"))
        return Form::Tagged;
    if (extension == QLatin1String("packed"))
        return Form::Packed;
    throw TallyException(QStringLiteral("%1: the extension must be .csv, .xml, .tagged or .packed.").arg(path));
}

void readList(const QString& path, FrequencyStoreListHelper& helper, QStringList& warnings)
{
    try {
        if (helper.GetListType() == ListType::DetectionResult)
            readRecord(path, helper.GetDetectionResultList());
        else if (formOf(path) == Form::Csv)
            readCsv(path, helper, warnings);
        else
            readRecord(path, helper.GetFrequencyStoreList());
    } catch (TallyFormException& failure) {
        if (failure.GetOrigin().isEmpty() && !failure.GetMessage().contains(path))
            failure.SetOrigin(path);
        throw;
    }
}

void writeList(const QString& path, FrequencyStoreListHelper& helper, QStringList& warnings)
{
    const Form form = formOf(path);
    if (form == Form::Csv)
        return writeCsv(path, helper, warnings);
    if (helper.GetListType() == ListType::DetectionResult)
        DetectionResultHelper(helper.GetDetectionResultList(), helper.GetFrequencyStoreList());
    writeRecord(path, form, helper.GetFrequencyStoreList());
}
