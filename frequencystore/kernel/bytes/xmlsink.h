#pragma once

/// Where the XML form of a record goes: to a QXmlStreamWriter or, several times as fast, into bytes.

#include "base/tallyobject.h"
#include "frequencystore/kernel/bytes/bytebuffer.h"
#include "frequencystore/kernel/model/member.h"

class QXmlStreamWriter;

namespace Velmara::kernel {

class XmlSink
{
public:
    virtual ~XmlSink();

    /// A null version is none.
    virtual void startElement(const QString& name, const QString& version) = 0;
    virtual void endElement(const QString& name) = 0;
    /// Writes a value in the form of its member: an element, an attribute or the content.
    virtual void put(const Member& m, const QString& text) = 0;
    /// The same for ASCII that needs no escape.
    virtual void put(const Member& m, QLatin1String text) = 0;

    /// Notes that the document is none that can be read again.
    void refuse() { m_isCarried = false; }
    /// Whether nothing was refused so far, and all texts held only what XML can carry.
    bool isCarried() const { return m_isCarried; }

private:
    bool m_isCarried = true;
};

class QtXmlSink final : public XmlSink
{
public:
    explicit QtXmlSink(QXmlStreamWriter& writer) : m_writer(writer) {}

    void startElement(const QString& name, const QString& version) override;
    void endElement(const QString& name) override;
    void put(const Member& m, const QString& text) override;
    void put(const Member& m, QLatin1String text) override;

private:
    QXmlStreamWriter& m_writer;
};

/// Appends the very bytes that a QXmlStreamWriter would write, indented by one blank a level or not at all. A sink, if
/// there is one, takes them whenever they are many.
class Utf8XmlSink final : public XmlSink
{
public:
    Utf8XmlSink(QByteArray& out, bool isIndented, const TALLYFORM::ByteSink& sink);

    void startElement(const QString& name, const QString& version) override;
    void endElement(const QString& name) override;
    void put(const Member& m, const QString& text) override;
    void put(const Member& m, QLatin1String text) override;

private:
    /// What stands before the next token, seen from the last one.
    enum class State { InStartTag, BehindContent, BehindElement };

    void append(QLatin1String text) { m_out.append(text.data(), text.size()); }
    void append(char c) { *m_out.extend(1) = c; }
    void appendIndent();
    void appendEscaped(const QString& text, bool isAttribute);
    void appendCodePoint(char32_t c);
    void closeStartTag();
    template <class AppendText> void putText(const Member& m, AppendText appendText);

    ByteBuffer m_out;
    const TALLYFORM::ByteSink& m_sink;
    int m_depth = 0;
    bool m_isIndented;
    State m_state = State::BehindElement;
};

/// Whether a text has only characters that a document may hold.
bool canXmlCarry(const QString& text);

} // namespace Velmara::kernel
