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

const char noPackedList[] = "This is no packed list, or a damaged one.";
const char noEntries[] = "a list without entries can only be written as CSV.";

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
        throw BinaryParsingException(noPackedList, Fault::Kind::Damaged);
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

BadRows badRowsOf(const ListFile& file) { return file.skipsBad ? BadRows::AreSkipped : BadRows::EndReading; }

TallyException failureOfCsv(const ListFile& file, const ImportReport& report)
{
    warn(warningsOf(file.name, report, Extent::First));
    QFile unread(file.path);
    const bool isRead = unread.open(QIODevice::ReadOnly);
    return TallyException(isRead ? describe(file.path, report)
                                 : unread.errorString()); // which the report does not tell
}

QStringList readCsv(const ListFile& file, FrequencyStoreListHelper& helper, Extent extent)
{
    const ImportReport report
        = FileHandling().ReadCSV(file.path, helper.GetFrequencyStoreList(), file.type, badRowsOf(file));
    if (!report.isComplete)
        throw failureOfCsv(file, report);
    return warningsOf(file.name, report, extent);
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
        throw TallyException(noEntries);
    if (form == Form::Xml)
        return list.WriteXml(path);
    writeBytes(path, form == Form::Packed ? packedForm(list) : list.GetBinaryRepresentationAsQByteArray());
}

/// Does something of which a failure concerns the file that is written.
template <class Action> void writing(const ListFile& file, const QString& path, Action action)
{
    try {
        action();
    } catch (const TallyFormException& failure) {
        throw failureOf(failure, path, file.name);
    }
}

void writeTo(const QString& path, const ListFile& file, FrequencyStoreListHelper& helper)
{
    writing(file, path, [&] {
        if (file.form == Form::Csv)
            writeCsv(path, file.name, helper);
        else
            writeRecord(path, file.form, helper.GetFrequencyStoreList());
    });
}

/// Has a file written, at its path or where it waits for standard output, which is to get all or nothing, too.
template <class Write> void writeFile(const ListFile& file, Write write)
{
    const QTemporaryDir folder;
    const QString path = file.isStream() ? folder.filePath("list") : file.path;
    write(path);
    if (file.isStream() && QFile::exists(path))
        printFile(path);
}

ListForm listForm(Form form)
{
    switch (form) {
    case Form::Xml: return ListForm::Xml;
    case Form::Tagged: return ListForm::Tagged;
    case Form::Packed: return ListForm::Packed;
    default: return ListForm::Csv;
    }
}

bool readNext(EntryReader& reader, const ListFile& file)
{
    try {
        return reader.next();
    } catch (const TallyFormException& failure) {
        const bool isNoPackedList = file.form == Form::Packed && failure.GetFault().kind == Fault::Kind::Damaged;
        if (isNoPackedList)
            throw failureOf(BinaryParsingException(noPackedList, Fault::Kind::Damaged), file.path, file.name);
        throw failureOf(file.form == Form::Csv ? failureOfCsv(file, reader.report()) : failure, file.path, file.name);
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
    writeFile(file, [&](const QString& path) { writeTo(path, file, helper); });
}

std::optional<qint64> copyList(const ListFile& told, const ListFile& to)
{
    const Progress progress("reading " + told.name);
    const ListFile from = asRegularFile(told);
    EntryReader reader(from.path, listForm(from.form), from.type, badRowsOf(from));
    bool isThere = readNext(reader, from);
    const FrequencyStoreList heading = reader.heading();
    std::optional<qint64> count;
    writeFile(to, [&](const QString& path) {
        EntryWriter writer(path, listForm(to.form), to.type);
        writer.heading() = heading;
        for (; isThere; isThere = readNext(reader, from))
            writing(to, path, [&] { writer.write(reader.item()); });
        warn(warningsOf(from.name, reader.report(), Extent::First));
        if (!(reader.heading() == heading))
            return;
        writing(to, path, [&] {
            if (writer.count() == 0 && to.form != Form::Csv)
                throw TallyException(noEntries);
            writer.finish();
        });
        warn(warningsOf(to.name, writer.report()));
        count = writer.count();
    });
    return count;
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QString reason;
    if (path == "-")
        print(bytes);
    else if (SaveFile(path, bytes, reason) != SaveResult::Saved)
        throw TallyException(QString("%1: %2").arg(path, reason));
}
