#include "listfile.h"

#include <base/files.h>

#include <QDataStream>
#include <QFile>
#include <QFileInfo>

using namespace TALLYFORM;
using namespace Velmara;

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
template <class Operation> void demand(const FrequencyStoreList& list, Operation operation)
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
    if (!file.open(QIODevice::ReadOnly))
        throw TallyException(file.errorString());
    return file.readAll();
}

void readPacked(const QString& path, FrequencyStoreList& list)
{
    QDataStream stream(bytesOf(path));
    list.SetVersionSpecificBinaryWithoutValidation(stream);
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        throw BinaryParsingException(QStringLiteral("This is no packed list, or a damaged one."));
}

void fill(FrequencyStoreList& list, const QString& path, FileHandling::ListType type)
{
    switch (formOf(path)) {
    case Form::Csv: FileHandling().ReadCSV(path, list, type); break;
    case Form::Xml: demand(list, [&] { return list.LoadXml(path); }); break;
    case Form::Tagged: demand(list, [&] { return list.LoadBinary(path); }); break;
    case Form::Packed: readPacked(path, list); break;
    }
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

FrequencyStoreList readList(const QString& path, FileHandling::ListType type)
{
    FrequencyStoreList list;
    try {
        fill(list, path, type);
    } catch (TallyFormException& failure) {
        if (failure.GetOrigin().isEmpty() && !failure.GetMessage().contains(path))
            failure.SetOrigin(path);
        throw;
    }
    return list;
}

void writeList(const QString& path, const FrequencyStoreList& list, FileHandling::ListType type)
{
    if (list.GetFrequencyStoreEntry().isEmpty() && formOf(path) != Form::Csv)
        throw TallyException(QStringLiteral("%1: a list without entries can only be written as CSV.").arg(path));
    switch (formOf(path)) {
    case Form::Csv: {
        FrequencyStoreListHelper helper;
        helper.SetListType(type);
        helper.SetFrequencyStoreList(list);
        FileHandling().WriteCSV(path, helper);
        break;
    }
    case Form::Xml: demand(list, [&] { return list.SaveXml(path); }); break;
    case Form::Tagged: writeBytes(path, list.GetBinaryRepresentationAsQByteArray()); break;
    case Form::Packed: writeBytes(path, packedForm(list)); break;
    }
}
