#include "base/exceptions.h"
#include "base/files.h"
#include "base/report.h"
#include "base/tallyobject.h"
#include "base/xmlinput.h"

#include <QFile>
#include <QScopeGuard>
#include <QTextCodec>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace TALLYFORM {

namespace {

QString sourceFile() { return QStringLiteral("base/xmldocument.cpp"); }

bool refuse(const ITallyObject& object, const QString& reason, int line)
{
    report(object, reason, sourceFile(), static_cast<unsigned short>(line));
    return false;
}

QString placeIn(const QString& source, const QXmlStreamReader& reader)
{
    return QStringLiteral("%1, line %2, column %3")
        .arg(source, QString::number(reader.lineNumber()), QString::number(reader.columnNumber()));
}

bool findRoot(QXmlStreamReader& reader, const QString& name)
{
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::StartElement) {
        if (reader.tokenType() == QXmlStreamReader::DTD) // its entities let a small document grow without bound
            reader.raiseError(QStringLiteral("A document type definition is not accepted."));
    }
    if (!reader.hasError() && reader.name() != name)
        reader.raiseError(QStringLiteral("The root element is '%1', not '%2'.").arg(reader.name().toString(), name));
    return !reader.hasError();
}

void readRoot(ITallyObject& object, QXmlStreamReader& reader, const QString& source)
{
    try {
        object.ProcessXml(reader);
    } catch (TallyFormException& failure) {
        if (reader.hasError()) // what is missing is missing because the document breaks off
            return;
        report(object, failure, placeIn(source, reader), sourceFile(), __LINE__);
        throw;
    }
}

void parse(ITallyObject& object, QXmlStreamReader& reader, const QString& source)
{
    reader.setNamespaceProcessing(false); // there are none, and to look them up may take long
    if (findRoot(reader, object.GetObjectName()))
        readRoot(object, reader, source);
    while (!reader.atEnd())
        reader.readNext();
}

bool isRead(const ITallyObject& object, const QXmlStreamReader& reader, const QString& source)
{
    return !reader.hasError()
        || refuse(object, placeIn(source, reader) + QLatin1String(": ") + reader.errorString(), __LINE__);
}

bool readText(ITallyObject& object, const QString& text, const QString& source)
{
    if (!text.isValidUtf16()) // of which the parser would make something else
        return refuse(object, source + QLatin1String(": A character that XML cannot carry."), __LINE__);
    CrowdedTagSearch search;
    search.pass(text);
    if (search.hasFound())
        return refuse(object, source + QLatin1String(": ") + CrowdedTagSearch::reason(), __LINE__);
    QXmlStreamReader reader(text);
    parse(object, reader, source);
    return isRead(object, reader, source);
}

bool readUtf8(ITallyObject& object, XmlFile& file, const QString& source)
{
    QXmlStreamReader reader(&file);
    parse(object, reader, source);
    if (!file.reason().isNull())
        return refuse(object, source + QLatin1String(": ") + file.reason(), __LINE__);
    return isRead(object, reader, source);
}

/// Whether the text gives the document back, less a byte order mark: not every codec tells what it could not decode.
bool isDecodingOf(const QByteArray& document, const QString& text, const QTextCodec& codec)
{
    constexpr int longestMark = 4;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QByteArray encoded = codec.fromUnicode(text.constData(), text.size(), &state);
    return document.endsWith(encoded) && document.size() - encoded.size() <= longestMark;
}

bool readForeign(ITallyObject& object, XmlFile& file, const QString& source)
{
    const QByteArray document = file.readAll();
    if (!file.reason().isNull())
        return refuse(object, source + QLatin1String(": ") + file.reason(), __LINE__);
    const QString text = file.foreignCodec()->toUnicode(document);
    if (!isDecodingOf(document, text, *file.foreignCodec()))
        return refuse(object, source + QLatin1String(": Not in the encoding that it declares."), __LINE__);
    return readText(object, text, source);
}

bool appendElement(const ITallyObject& object, QByteArray& document, bool isIndented, const ByteDrain& drain)
{
    const int before = document.size();
    bool isDrained = false;
    const ByteDrain noticed = [&](const char* bytes, int size) {
        isDrained = true;
        drain(bytes, size);
    };
    const bool isCarried = object.AppendXml(document, isIndented, drain ? noticed : nullptr);
    if (!isDrained && document.size() == before)
        return refuse(object, object.GetObjectName() + QLatin1String(": Nothing to write."), __LINE__);
    if (isCarried) {
        reportUncarried(object, WrittenForm::Xml, sourceFile(), __LINE__);
        return true;
    }
    const QString uncarried = object.FindUncarried(WrittenForm::Xml);
    return refuse(object,
                  object.GetObjectName() + QLatin1String(": ")
                      + (uncarried.isNull() ? QStringLiteral("A character that XML cannot carry.") : uncarried),
                  __LINE__);
}

} // namespace

bool ITallyObject::SetXmlString(const QString& xml, bool reset)
{
    if (reset)
        Reset();
    return readText(*this, xml, QStringLiteral("text"));
}

bool ITallyObject::LoadXml(const QString& path)
{
    QFile file(path);
    return LoadXml(file);
}

bool ITallyObject::LoadXml(QFile& file)
{
    const bool wasOpen = file.isOpen();
    if (!wasOpen && !file.open(QIODevice::ReadOnly))
        return refuse(*this, file.fileName() + QLatin1String(": ") + file.errorString(), __LINE__);
    const auto close = qScopeGuard([&] {
        if (!wasOpen)
            file.close();
    });
    if (!file.isReadable())
        return refuse(*this, file.fileName() + QLatin1String(": Not open for reading."), __LINE__);
    XmlFile document(file);
    return document.foreignCodec() ? readForeign(*this, document, file.fileName())
                                   : readUtf8(*this, document, file.fileName());
}

bool ITallyObject::AppendXml(QByteArray& document, bool isIndented, const ByteDrain&) const
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
    return appendElement(*this, document, false, nullptr) ? QString::fromUtf8(document) : QString();
}

bool ITallyObject::SaveXml(const QString& path) const
{
    const auto produce = [this](const ByteDrain& drain) {
        QByteArray document("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        if (!appendElement(*this, document, true, drain))
            return false;
        document += '\n';
        drain(document.constData(), document.size());
        return true;
    };
    QString reason;
    const SaveResult result = SaveFile(path, produce, reason);
    return result == SaveResult::Saved
        || (result != SaveResult::NotProduced && refuse(*this, path + QLatin1String(": ") + reason, __LINE__));
}

} // namespace TALLYFORM
