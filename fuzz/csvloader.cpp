/// Any file for the CSV loader, as a file or as a stream. A text reads the same in every encoding.

#include "frequencystore/csvfileloader.h"
#include "fuzz/target.h"

#include <QDataStream>
#include <QTextStream>

using namespace Velmara;
using namespace Velmara::fuzz;

namespace {

/// The columns that are read from a file, each with its name.
QVector<QStringList> columnsOf(const QByteArray& file)
{
    CSVFileLoader loader;
    isDone([&] { loader.LoadFile(scratchFile(file)); });
    QVector<QStringList> columns;
    for (const QString& name : loader.GetColumnNames())
        columns += QStringList(name) + *loader.GetColumn(name)->GetValues();
    return columns;
}

template <class Units> QByteArray bytesOf(const Units& units, bool isBigEndian)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(isBigEndian ? QDataStream::BigEndian : QDataStream::LittleEndian);
    for (const auto unit : units)
        stream << unit;
    return bytes;
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    CSVFileLoader loader;
    const std::bitset<8> options = input.bits();
    QTextStream stream(input.rest());
    const bool isLoaded
        = isDone([&] { options[0] ? loader.LoadFile(stream, "stream") : loader.LoadFile(scratchFile(input.rest())); });
    const QStringList names = loader.GetColumnNames();
    require(!isLoaded || !names.isEmpty(), "a file that loads has columns");
    require(names.isEmpty() || loader.CheckHeader(names.join(';')), "columns are found by their names");
    const int rows = names.isEmpty() ? 0 : loader.GetColumn(names[0])->GetValues()->size();
    int line = 0;
    for (const QString& name : names)
        require(loader.GetColumn(name)->GetValues()->size() == rows, "every row has a cell in each column");
    for (int row = 0; row < rows; line = loader.GetLine(row++))
        require(loader.GetLine(row) >= line, "rows stand in the order of the file");

    // A zero character right behind a byte order mark would make another one of it.
    const QString text = QStringLiteral("\uFEFF#\n") + QString::fromUtf8(input.rest());
    const QByteArray wide = options[1] ? bytesOf(text.toUcs4(), options[2]) : bytesOf(text, options[2]);
    require(columnsOf(wide) == columnsOf(text.toUtf8()), "a text reads the same in every encoding");
}
