#include "base/report.h"
#include "base/savefile.h"
#include "base/tallyobject.h"
#include "base/xmlinput.h"

#include <QFile>
#include <QScopeGuard>
#include <QTextCodec>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace TALLYFORM {

namespace {

using Kind = Fault::Kind;

const QString noXmlCharacter = QStringLiteral("A character that XML cannot carry.");

InputPlace placeIn(const QString& source, const QXmlStreamReader& reader)
{
    return {.source = source, .line = reader.lineNumber(), .column = reader.columnNumber()};
}

/// Finds the root element, and gives the name of one that is another object's.
QString findRoot(QXmlStreamReader& reader, const QString& name)
{
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::StartElement) {
        if (reader.tokenType() == QXmlStreamReader::DTD) // its entities let a small document grow without bound
            reader.raiseError(QStringLiteral("A document type definition is not accepted."));
    }
    if (reader.hasError() || reader.name() == name)
        return {};
    QString root = reader.name().toString();
    reader.raiseError(QStringLiteral("The root element is '%1', not '%2'.").arg(root, name));
    return root;
}

void readRoot(ITallyObject& object, QXmlStreamReader& reader, const QString& source)
{
    try {
        object.ProcessXml(reader);
    } catch (TallyFormException& failure) {
        if (reader.hasError()) // what is missing is missing because the document breaks off
            return;
        failure.GetFault().place = placeIn(source, reader);
        report(object, failure);
        throw;
    }
}

/// Throws Refusal for a document that is not well-formed or is another object's, unless `reason` tells more.
template <class Reason> void parse(ITallyObject& object, QXmlStreamReader& reader, const QString& source, Reason reason)
{
    reader.setNamespaceProcessing(false); // there are none, and to look them up may take long
    const QString otherRoot = findRoot(reader, object.GetObjectName());
    if (!reader.hasError())
        readRoot(object, reader, source);
    while (!reader.atEnd())
        reader.readNext();
    if (!reason().isNull())
        throw Refusal({source}, reason(), Kind::Unreadable);
    if (reader.hasError())
        throw Refusal(placeIn(source, reader), reader.errorString(),
                      otherRoot.isNull() ? Kind::Damaged : Kind::OtherObject, otherRoot);
}

void readText(ITallyObject& object, const QString& text, const QString& source)
{
    if (!text.isValidUtf16()) // of which the parser would make something else
        throw Refusal({source}, noXmlCharacter, Kind::Damaged);
    CrowdedTagSearch search;
    search.pass(text);
    if (search.hasFound())
        throw Refusal({source}, CrowdedTagSearch::reason(), Kind::Unreadable);
    QXmlStreamReader reader(text);
    parse(object, reader, source, [] { return QString(); });
}

void readUtf8(ITallyObject& object, XmlFile& file, const QString& source)
{
    QXmlStreamReader reader(&file);
    parse(object, reader, source, [&] { return file.reason(); });
}

/// Whether the text gives the document back, less a byte order mark: not every codec tells what it could not decode.
bool isDecodingOf(const QByteArray& document, const QString& text, const QTextCodec& codec)
{
    constexpr int longestMark = 4;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QByteArray encoded = codec.fromUnicode(text.constData(), text.size(), &state);
    return document.endsWith(encoded) && document.size() - encoded.size() <= longestMark;
}

void readForeign(ITallyObject& object, XmlFile& file, const QString& source)
{
    const QByteArray document = file.readAll();
    if (!file.reason().isNull())
        throw Refusal({source}, file.reason(), Kind::Unreadable);
    const QString text = file.foreignCodec()->toUnicode(document);
    if (!isDecodingOf(document, text, *file.foreignCodec()))
        throw Refusal({source}, QStringLiteral("Not in the encoding that it declares."), Kind::Damaged);
    readText(object, text, source);
}

void appendElement(const ITallyObject& object, QByteArray& document, bool isIndented, const ByteSink& sink)
{
    const int before = document.size();
    bool isTaken = false;
    const ByteSink noticed = [&](const char* bytes, int size) {
        isTaken = true;
        sink(bytes, size);
    };
    const bool isCarried = object.AppendXml(document, isIndented, sink ? noticed : nullptr);
    const QString name = object.GetObjectName() + QLatin1String(": ");
    if (!isTaken && document.size() == before)
        throw Refusal({}, name + QLatin1String("Nothing to write."), Kind::Missing);
    if (!isCarried) {
        const QString uncarried = object.FindUncarried(WrittenForm::Xml);
        throw Refusal({}, name + (uncarried.isNull() ? noXmlCharacter : uncarried), Kind::Uncarried);
    }
    reportUncarried(object, WrittenForm::Xml);
}

} // namespace

bool ITallyObject::SetXmlString(const QString& xml, bool reset)
{
    if (reset)
        Reset();
    return isDone(*this, [&] { readText(*this, xml, QStringLiteral("text")); });
}

bool ITallyObject::LoadXml(const QString& path)
{
    QFile file(path);
    return LoadXml(file);
}

bool ITallyObject::LoadXml(QFile& file)
{
    return isDone(*this, [&] { ReadXml(file); });
}

void ITallyObject::ReadXml(QFile& file)
{
    const bool wasOpen = file.isOpen();
    if (!wasOpen && !file.open(QIODevice::ReadOnly))
        throw Refusal({file.fileName()}, file.errorString(), Kind::Unreadable);
    const auto close = qScopeGuard([&] {
        if (!wasOpen)
            file.close();
    });
    if (!file.isReadable())
        throw Refusal({file.fileName()}, QStringLiteral("Not open for reading."), Kind::Unreadable);
    XmlFile document(file);
    document.foreignCodec() ? readForeign(*this, document, file.fileName())
                            : readUtf8(*this, document, file.fileName());
}

bool ITallyObject::AppendXml(QByteArray& document, bool isIndented, const ByteSink&) const
{
    QString text; // much faster to write into than a device
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(isIndented);
    writer.setAutoFormattingIndent(1);
    GetXml(writer);
    document += text.toUtf8();
    return !writer.hasError() && text.isValidUtf16();
}

QString ITallyObject::GetXmlString() const
{
    QByteArray document;
    return isDone(*this, [&] { appendElement(*this, document, false, nullptr); }) ? QString::fromUtf8(document)
                                                                                  : QString();
}

bool ITallyObject::SaveXml(const QString& path) const
{
    return isDone(*this, [&] { WriteXml(path); });
}

void ITallyObject::WriteXml(const QString& path) const
{
    const auto produce = [this](const ByteSink& sink) {
        QByteArray document("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        appendElement(*this, document, true, sink);
        document += '\n';
        sink(document.constData(), document.size());
        return true;
    };
    QString reason;
    if (SaveFile(path, produce, reason) != SaveResult::Saved)
        throw Refusal({path}, reason, Kind::Unwritable);
}

} // namespace TALLYFORM
