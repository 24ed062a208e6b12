#include "base/plainpull.h"
#include "base/report.h"
#include "base/savefile.h"
#include "base/tallyobject.h"
#include "base/xmlinput.h"

#include <QFile>
#include <QScopeGuard>
#include <QTextCodec>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cstring>

namespace TALLYFORM {

namespace {

using Kind = Fault::Kind;

const QString noXmlCharacter = QStringLiteral("A character that XML cannot carry.");

InputPlace placeIn(const QString& source, const QXmlStreamReader& reader)
{
    return {.source = source, .line = reader.lineNumber(), .column = reader.columnNumber()};
}

template <class From> QXmlStreamReader& restart(std::optional<QXmlStreamReader>& reader, From from)
{
    reader.emplace(from);
    reader->setNamespaceProcessing(false); // there are none, and to look them up may take long
    return *reader;
}

class TextInput final : public XmlInput
{
public:
    explicit TextInput(const QString& text) : m_text(text) {}

    int read(char* to, int size) override
    {
        constexpr int longestUnit = 3; // for a pair of surrogates takes four bytes
        QStringView piece = QStringView(m_text).mid(m_at, size / longestUnit);
        if (!piece.isEmpty() && piece.back().isHighSurrogate())
            piece = piece.chopped(1);
        m_at += piece.size();
        const QByteArray bytes = piece.toUtf8();
        std::memcpy(to, bytes.constData(), std::size_t(bytes.size()));
        return bytes.size();
    }
    QXmlStreamReader& restart() override { return TALLYFORM::restart(m_reader, m_text); }

private:
    const QString m_text;
    qsizetype m_at = 0;
    std::optional<QXmlStreamReader> m_reader;
};

class FileInput final : public XmlInput
{
public:
    explicit FileInput(QFile& file) : m_file(file), m_start(file.pos()) { m_document.emplace(file); }

    XmlFile& document() { return *m_document; }
    int read(char* to, int size) override { return int(m_document->read(to, size)); }
    QXmlStreamReader& restart() override
    {
        m_file.seek(m_start);
        m_document.emplace(m_file);
        return TALLYFORM::restart(m_reader, &*m_document);
    }

private:
    QFile& m_file;
    const qint64 m_start;
    std::optional<XmlFile> m_document;
    std::optional<QXmlStreamReader> m_reader;
};

void readRoot(ITallyObject& object, XmlPull& document, const QString& source)
{
    try {
        object.ReadElement(document);
    } catch (TallyFormException& failure) {
        const QXmlStreamReader& reader = document.reader();
        if (reader.hasError()) // what is missing is missing because the document breaks off
            return;
        failure.GetFault().place = placeIn(source, reader);
        report(object, failure);
        throw;
    }
}

/// Throws Refusal for a document that is not well-formed or is another object's, unless `reason` tells more.
template <class Reason> void parse(ITallyObject& object, XmlPull& document, const QString& source, Reason reason)
{
    const QString name = object.GetObjectName();
    QString otherRoot;
    if (document.next() == XmlPull::Tag::Start) {
        const QString root = QString::fromUtf8(document.name().data(), int(document.name().size()));
        if (root == name) {
            readRoot(object, document, source);
        } else {
            otherRoot = root;
            document.reader().raiseError(QStringLiteral("The root element is '%1', not '%2'.").arg(root, name));
        }
    }
    while (document.next() != XmlPull::Tag::None) {}
    if (!reason().isNull())
        throw Refusal({source}, reason(), Kind::Unreadable);
    if (document.hasError())
        throw Refusal(placeIn(source, document.reader()), document.reader().errorString(),
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
    TextInput input(text);
    PlainPull document(input);
    parse(object, document, source, [] { return QString(); });
}

void readUtf8(ITallyObject& object, FileInput& input, bool isReadOnce, const QString& source)
{
    const auto reason = [&] { return input.document().reason(); };
    if (isReadOnce) {
        std::optional<QXmlStreamReader> reader;
        QtPull document(restart(reader, &input.document()));
        return parse(object, document, source, reason);
    }
    PlainPull document(input);
    parse(object, document, source, reason);
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
    FileInput input(file);
    if (input.document().foreignCodec())
        readForeign(*this, input.document(), file.fileName());
    else
        readUtf8(*this, input, file.isSequential(), file.fileName());
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
