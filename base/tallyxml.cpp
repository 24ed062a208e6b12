#include "base/readfile.h"
#include "base/report.h"
#include "base/savefile.h"
#include "base/tallyobject.h"
#include "base/xmldocument.h"

#include <QFile>
#include <QScopeGuard>
#include <QXmlStreamWriter>

namespace TALLYFORM {

namespace {

using Kind = Fault::Kind;

const QString noXmlCharacter = QStringLiteral("A character that XML cannot carry.");

void readXml(ITallyObject& object, XmlDocument& document)
{
    if (document.begin(object)) {
        try {
            object.ReadElement(document.pull());
        } catch (TallyFormException& failure) {
            if (document.locate(failure)) {
                report(object, failure);
                throw;
            }
        }
    }
    document.end();
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
    return isDone(*this, [&] { readXml(*this, *XmlDocument::of(xml, QStringLiteral("text"))); });
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
    readXml(*this, *XmlDocument::of(file, GetInputLimit()));
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
