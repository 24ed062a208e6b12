#include "base/xmldocument.h"

#include "base/plainpull.h"
#include "base/report.h"
#include "base/tallyobject.h"
#include "base/xmlinput.h"

#include <QFile>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>

namespace TALLYFORM {

namespace {

using Kind = Fault::Kind;

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
    FileInput(QFile& file, qint64 limit) : m_file(file), m_start(file.pos()) { m_bytes.emplace(file, limit); }

    XmlFile& bytes() { return *m_bytes; }
    const XmlFile& bytes() const { return *m_bytes; }
    int read(char* to, int size) override { return std::max(0, int(m_bytes->read(to, size))); }
    QXmlStreamReader& restart() override
    {
        if (m_bytes->reason().isNull()) {
            m_file.seek(m_start);
            const qint64 limit = m_bytes->limit();
            m_bytes.emplace(m_file, std::numeric_limits<qint64>::max()); // its size was found to be right before
            m_bytes->setLimit(limit);
        }
        return readHere();
    }
    /// Qt's reader, where nothing was read yet.
    QXmlStreamReader& readHere() { return TALLYFORM::restart(m_reader, &*m_bytes); }

private:
    QFile& m_file;
    const qint64 m_start;
    std::optional<XmlFile> m_bytes;
    std::optional<QXmlStreamReader> m_reader;
};

class TextDocument final : public XmlDocument
{
public:
    TextDocument(const QString& text, const QString& source) : XmlDocument(source), m_input(text), m_pull(m_input) {}
    XmlPull& pull() override { return m_pull; }

private:
    TextInput m_input;
    PlainPull m_pull;
};

/// One that cannot be read twice is left to Qt's reader from the beginning.
class FileDocument final : public XmlDocument
{
public:
    FileDocument(QFile& file, qint64 limit) : XmlDocument(file.fileName()), m_input(file, limit)
    {
        if (file.isSequential())
            m_pull = std::make_unique<QtPull>(m_input.readHere());
        else
            m_pull = std::make_unique<PlainPull>(m_input);
    }
    XmlPull& pull() override { return *m_pull; }
    void allow(qint64 bytes) override { m_input.bytes().setLimit(m_input.bytes().fetched() + bytes); }
    XmlFile& bytes() { return m_input.bytes(); }

private:
    QString reason() const override { return m_input.bytes().reason(); }

    FileInput m_input;
    std::unique_ptr<XmlPull> m_pull;
};

/// Whether the text gives the document back, less a byte order mark: not every codec tells what it could not decode.
bool isDecodingOf(const QByteArray& document, const QString& text, const QTextCodec& codec)
{
    constexpr int longestMark = 4;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QByteArray encoded = codec.fromUnicode(text.constData(), text.size(), &state);
    return document.endsWith(encoded) && document.size() - encoded.size() <= longestMark;
}

QString decoded(XmlFile& file, const QString& source)
{
    const QByteArray document = file.readAll();
    if (!file.reason().isNull())
        throw Refusal({source}, file.reason(), Kind::Unreadable);
    const QString text = file.foreignCodec()->toUnicode(document);
    if (!isDecodingOf(document, text, *file.foreignCodec()))
        throw Refusal({source}, QStringLiteral("Not in the encoding that it declares."), Kind::Damaged);
    return text;
}

} // namespace

XmlDocument::~XmlDocument() = default;

std::unique_ptr<XmlDocument> XmlDocument::of(const QString& text, const QString& source)
{
    if (!text.isValidUtf16()) // of which the parser would make something else
        throw Refusal({source}, QStringLiteral("A character that XML cannot carry."), Kind::Damaged);
    CrowdedTagSearch search;
    search.pass(text);
    if (search.hasFound())
        throw Refusal({source}, CrowdedTagSearch::reason(), Kind::Unreadable);
    return std::make_unique<TextDocument>(text, source);
}

std::unique_ptr<XmlDocument> XmlDocument::of(QFile& file, qint64 limit)
{
    auto document = std::make_unique<FileDocument>(file, limit);
    if (document->bytes().foreignCodec())
        return of(decoded(document->bytes(), file.fileName()), file.fileName());
    return document;
}

InputPlace XmlDocument::place()
{
    const QXmlStreamReader& reader = pull().reader();
    return {.source = m_source, .line = reader.lineNumber(), .column = reader.columnNumber()};
}

bool XmlDocument::begin(const ITallyObject& object)
{
    if (pull().next() != XmlPull::Tag::Start)
        return false;
    const std::string_view name = pull().name();
    const QString root = QString::fromUtf8(name.data(), int(name.size()));
    if (root == object.GetObjectName())
        return true;
    m_otherRoot = root;
    pull().reader().raiseError(QStringLiteral("The root element is '%1', not '%2'.").arg(root, object.GetObjectName()));
    return false;
}

bool XmlDocument::locate(TallyFormException& failure)
{
    if (pull().reader().hasError()) // what is missing is missing because the document breaks off
        return false;
    failure.GetFault().place = place();
    return true;
}

void XmlDocument::end()
{
    while (pull().next() != XmlPull::Tag::None) {}
    if (!reason().isNull())
        throw Refusal({m_source}, reason(), Kind::Unreadable);
    if (pull().hasError())
        throw Refusal(place(), pull().reader().errorString(), m_otherRoot.isNull() ? Kind::Damaged : Kind::OtherObject,
                      m_otherRoot);
}

} // namespace TALLYFORM
