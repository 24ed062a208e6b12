#pragma once

/// The floors: what the same work costs without the library, by the plainest code on what it builds on.

#include <QStringList>
#include <QVector>

#include <string>
#include <variant>
#include <vector>

namespace Velmara::bench {

/// What a floor went over, which tells that it did the work.
struct Tally
{
    qint64 values = 0;
    qint64 numbers = 0;
    double sum = 0;

    void take(const QStringRef& text);
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
    /// Collects the tokens of a document.
    explicit XmlFloor(const QString& path);

    /// Goes over a document, converts its numbers and keeps nothing.
    static Tally load(const QString& path);
    /// Writes the document again.
    bool save(const QString& path) const;
    /// Writes a file of that size, and nothing else: the same bytes over and over.
    static bool saveBytes(const QString& path, qint64 size);

    const std::vector<XmlToken>& tokens() const { return m_tokens; }
    Tally tally() const;

private:
    std::vector<XmlToken> m_tokens;
};

/// Tagged binary: its bytes copied, and the numbers in it formatted or parsed.
class TaggedFloor
{
public:
    TaggedFloor(const std::vector<XmlToken>& tokens, const QByteArray& bytes);

    QByteArray write() const;
    /// The bytes and the sum of the numbers in them.
    std::pair<QByteArray, double> read() const;
    double sum() const;

private:
    struct Number
    {
        double value;
        int precision;
        int place; ///< of its text in the bytes
        QByteArray text;
    };

    QByteArray m_bytes;
    std::vector<Number> m_numbers;
};

/// A CSV file by Qt's text stream alone.
class CsvFloor
{
public:
    /// Collects the cells of a memory scan file.
    explicit CsvFloor(const QString& path);

    /// Splits all lines and gives the number of cells.
    static qint64 load(const QString& path);
    /// Writes the same cells, numbers as numbers.
    bool save(const QString& path) const;

    qint64 cells() const { return qint64(m_cells.size()); }

private:
    struct Fixed
    {
        double value;
    };
    struct General
    {
        double value;
    };
    using Cell = std::variant<QString, int, Fixed, General>;

    static Cell cellOf(const QString& column, const QString& text);
    void collect(const QStringList& line);

    QStringList m_columns;
    std::vector<Cell> m_cells;
};

} // namespace Velmara::bench
