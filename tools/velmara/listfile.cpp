#include "listfile.h"

#include "messages.h"
#include "regularfile.h"
#include "terminal.h"

#include <base/readfile.h>
#include <base/savefile.h>

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>

using namespace TALLYFORM;
using namespace Velmara;

namespace {

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

void readPacked(const QString& path, ITallyObject& list)
{
    QDataStream stream(bytesOf(path));
    try {
        DescriptionOf(list).setPacked(list, stream);
    } catch (const TallyFormException&) {
        if (stream.status() == QDataStream::Ok)
            throw;
    }
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        throw BinaryParsingException("This is no packed list, or a damaged one.", Fault::Kind::Damaged);
}

/// Reads the forms that all records have.
void readRecord(const ListFile& file, ITallyObject& list)
{
    QFile document(file.path);
    switch (file.form) {
    case Form::Xml: return list.ReadXml(document);
    case Form::Tagged: return list.ReadBinary(file.path);
    case Form::Packed: return readPacked(file.path, list);
    case Form::Csv: throw TallyException("This list type cannot be read from CSV.");
    }
}

QStringList readCsv(const ListFile& file, FrequencyStoreListHelper& helper, Extent extent)
{
    const ImportReport report = FileHandling().ReadCSV(file.path, helper.GetFrequencyStoreList(), file.type,
                                                       file.skipsBad ? BadRows::AreSkipped : BadRows::EndReading);
    const QStringList warnings = warningsOf(file.name, report, extent);
    if (report.isComplete)
        return warnings;
    warn(warnings);
    if (QFile unread(file.path); !unread.open(QIODevice::ReadOnly)) // of which the report does not tell the reason
        throw TallyException(unread.errorString());
    throw TallyException(describe(file.path, report));
}

/// What to do about a list of the other kind.
QString adviceFor(const Fault& fault)
{
    if (fault.kind != Fault::Kind::OtherObject)
        return {};
    if (fault.member == DetectionResultList::GetStaticObjectName())
        return " Read it with --type DetectionResult.";
    if (fault.member == FrequencyStoreList::GetStaticObjectName())
        return " It holds entries, not --type DetectionResult.";
    return {};
}

/// A failure as it concerns the file that the operator named, by whose path messages may name it too.
TallyException failureOf(const TallyFormException& failure, const QString& path, const QString& name)
{
    Fault fault = failure.GetFault();
    if (!tellsFile(fault.message, path))
        fault.place.source = name;
    fault.message.replace(path, name);
    fault.message += adviceFor(fault);
    return TallyException(fault);
}

QStringList load(const ListFile& told, FrequencyStoreListHelper& helper, Extent extent)
{
    const Progress progress("reading " + told.name);
    const ListFile file = asRegularFile(told);
    if (file.type != ListType::Invalid)
        helper.SetListType(file.type);
    try {
        if (file.type == ListType::DetectionResult)
            readRecord(file, helper.GetDetectionResultList());
        else if (file.form == Form::Csv)
            return readCsv(file, helper, extent);
        else
            readRecord(file, helper.GetFrequencyStoreList());
        return {};
    } catch (const TallyFormException& failure) {
        throw failureOf(failure, file.path, file.name);
    }
}

/// In portions, whatever its size.
void printFile(const QString& path)
{
    constexpr qint64 portion = 1 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw TallyException(file.errorString());
    for (QByteArray bytes = file.read(portion); !bytes.isEmpty(); bytes = file.read(portion))
        print(bytes);
}

QByteArray packedForm(const FrequencyStoreList& list)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    list.GetVersionSpecificBinaryWithoutValidation(stream);
    return bytes;
}

void writeCsv(const QString& path, const QString& name, FrequencyStoreListHelper& helper)
{
    const ExportReport report = FileHandling().WriteCSV(path, helper);
    if (!report.isComplete)
        throw TallyException(report.error);
    warn(warningsOf(name, report));
}

void writeRecord(const QString& path, Form form, const FrequencyStoreList& list)
{
    if (list.GetFrequencyStoreEntry().isEmpty())
        throw TallyException("a list without entries can only be written as CSV.");
    if (form == Form::Xml)
        return list.WriteXml(path);
    writeBytes(path, form == Form::Packed ? packedForm(list) : list.GetBinaryRepresentationAsQByteArray());
}

void writeTo(const QString& path, const ListFile& file, FrequencyStoreListHelper& helper)
{
    try {
        if (file.form == Form::Csv)
            return writeCsv(path, file.name, helper);
        writeRecord(path, file.form, helper.GetFrequencyStoreList());
    } catch (const TallyFormException& failure) {
        throw failureOf(failure, path, file.name);
    }
}

} // namespace

std::optional<Form> formNamed(const QString& name)
{
    static const QStringList names{"csv", "xml", "tagged", "packed"};
    const int form = names.indexOf(name.toLower());
    return form < 0 ? std::nullopt : std::optional(Form(form));
}

FrequencyStoreListHelper readList(const ListFile& file)
{
    FrequencyStoreListHelper helper;
    warn(load(file, helper, Extent::First));
    return helper;
}

QStringList readThoroughly(ListFile file, FrequencyStoreListHelper& helper)
{
    file.skipsBad = true;
    return load(file, helper, Extent::All);
}

void writeList(const ListFile& file, FrequencyStoreListHelper& helper)
{
    const Progress progress("writing " + file.name);
    if (!file.isStream())
        return writeTo(file.path, file, helper);
    const QTemporaryDir folder; // standard output is to get all or nothing, too
    const QString path = folder.filePath("list");
    writeTo(path, file, helper);
    printFile(path);
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QString reason;
    if (path == "-")
        print(bytes);
    else if (SaveFile(path, bytes, reason) != SaveResult::Saved)
        throw TallyException(QString("%1: %2").arg(path, reason));
}
