#pragma once

/// The floors: what the same work costs without the library, by the plainest code on what it builds on. When one is
/// made it makes sure that it does the same work, or throws.

#include <QStringList>
#include <QVector>

#include <google/protobuf/message.h>

#include <memory>
#include <string>
#include <vector>

namespace TALLYFORM {
class ITallyObject;
}

namespace Velmara::bench {

/// What a reader went over, which tells that it did the work.
struct Tally
{
    qint64 tags = 0;
    qint64 texts = 0;

    bool operator==(const Tally&) const = default;
};

/// One call of an XML writer.
struct XmlToken
{
    enum class Kind { Start, Attribute, Text, End };
    Kind kind;
    QString name;
    QString text;

    bool hasText() const { return kind == Kind::Attribute || kind == Kind::Text; }
    /// The version of a record, which is no member of it.
    bool isVersion() const { return kind == Kind::Attribute && name == QLatin1String("Version"); }
};

/// A document by Qt's stream reader and writer alone.
class XmlFloor
{
public:
    /// Collects the tokens of a document, which are to give the same bytes again.
    XmlFloor(const QString& document, const QString& output);

    ///@{
    /// Goes over a document, in a file or in memory, and keeps nothing.
    static Tally load(const QString& document);
    static Tally read(const QString& text);
    ///@}
    bool save() const;

    const std::vector<XmlToken>& tokens() const { return m_tokens; }

private:
    QString m_output;
    std::vector<XmlToken> m_tokens;
};

/// Writing tagged binary: its bytes copied, and the numbers in it formatted.
class TaggedFloor
{
public:
    TaggedFloor(const std::vector<XmlToken>& tokens, const QByteArray& bytes);

    QByteArray write() const;

private:
    struct Number
    {
        double value;
        int precision;
        int place; ///< of its text in the bytes
    };

    QByteArray m_bytes;
    std::vector<Number> m_numbers;
};

/// Packed binary and memory: a message of protocol buffers with the same members.
class PackedFloor
{
public:
    /// The tokens are those of the record's document.
    PackedFloor(const TALLYFORM::ITallyObject& record, const std::vector<XmlToken>& tokens);

    std::string write() const;
    /// Reads what `write` gives, or several of it one behind the other, which are one message with all their items.
    std::unique_ptr<google::protobuf::Message> read(const std::string& bytes) const;

    const std::string& bytes() const { return m_bytes; }

private:
    std::unique_ptr<google::protobuf::Message> m_message;
    std::string m_bytes;
};

/// A CSV file by Qt's text stream alone.
class CsvFloor
{
public:
    /// Collects the cells of a memory scan file, which are to give the same bytes again.
    CsvFloor(const QString& file, const QString& output);

    /// Splits all lines and gives the number of cells.
    qint64 load() const;
    /// Writes the same cells, whose texts stand ready.
    bool save() const;

private:
    QString m_file;
    QString m_output;
    QStringList m_cells;
    int m_columns = 0;
};

} // namespace Velmara::bench
