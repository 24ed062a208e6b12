#pragma once

#include "base/limitedfile.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>

class QTextCodec;

namespace TALLYFORM {

/// Looks for a tag with so many attributes that the parser, which compares each with each, would not come to an end.
class CrowdedTagSearch
{
public:
    /// Goes over the next portion of a document in UTF-8.
    void pass(const QByteArray& portion);
    /// The same for a text.
    void pass(const QString& portion);
    bool hasFound() const;
    static QString reason() { return QStringLiteral("An element has too many attributes."); }

private:
    enum class State { Outside, BehindOpen, InTag, InValue };

    template <class Char> void pass(const Char* at, const Char* end);
    template <class Char> const Char* passTag(const Char* at, const Char* end);
    void take(char16_t c);

    State m_state = State::Outside;
    char16_t m_quote = 0;
    int m_attributes = 0;
};

/// A document in a file, for the parser: it ends early where the parser must not go on.
class XmlFile final : public QIODevice
{
public:
    /// Begins at the position of an open file, which is to hold no more bytes than the limit.
    XmlFile(QFile& file, qint64 limit);

    /// How many bytes the parser got at most.
    qint64 fetched() const { return m_file.size(); }
    qint64 limit() const { return m_file.limit(); }
    void setLimit(qint64 limit) { m_file.setLimit(limit); }

    /// The codec of a document in another encoding than UTF-8; null for one in UTF-8.
    const QTextCodec* foreignCodec() const { return m_codec; }
    /// Why it ended early; null if it did not.
    QString reason() const
    {
        if (!m_refusal.isNull())
            return m_refusal;
        return m_search.hasFound() ? CrowdedTagSearch::reason() : m_file.reason();
    }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* to, qint64 size) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    void fetch();
    void search();

    LimitedFile m_file;
    QByteArray m_portion;
    int m_at = 0;      ///< what of the portion was handed out
    QString m_refusal; ///< of its encoding
    QTextCodec* m_codec;
    CrowdedTagSearch m_search;
};

} // namespace TALLYFORM
