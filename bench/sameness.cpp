#include "bench/sameness.h"

#include "bench/require.h"

#include <QFile>

#include <cmath>

namespace Velmara::bench {

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "a file opens");
    return file.readAll();
}

/// Sums may be taken in another order.
bool isNear(double left, double right) { return std::abs(left - right) <= 1e-9 * std::abs(left); }

bool isSame(const Tally& left, const Tally& right)
{
    return left.values == right.values && left.numbers == right.numbers && isNear(left.sum, right.sum);
}

} // namespace

void requireSame(const XmlFloor& floor, const QString& document, const QString& output)
{
    require(floor.save(output) && contentOf(output) == contentOf(document), "the XML floor writes the same document");
    require(isSame(XmlFloor::load(document), floor.tally()), "the XML floor reads all values");
}

void requireSame(const TaggedFloor& floor, const QByteArray& bytes)
{
    require(floor.write() == bytes, "the tagged floor writes the same bytes");
    const auto [copy, sum] = floor.read();
    require(copy == bytes && isNear(sum, floor.sum()), "the tagged floor reads all numbers");
}

void requireSame(const CsvFloor& floor, const QString& file, const QString& output)
{
    require(floor.save(output) && contentOf(output) == contentOf(file), "the CSV floor writes the same file");
    require(CsvFloor::load(file) == floor.cells(), "the CSV floor reads all cells");
}

void requireSame(const Tally& message, const std::vector<XmlToken>& document)
{
    Tally values;
    for (const XmlToken& token : document)
        if (token.hasText() && !token.isVersion())
            values.take(QStringRef(&token.text));
    require(isSame(message, values), "the message holds the values of the document");
}

} // namespace Velmara::bench
