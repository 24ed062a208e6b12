/// Any file for the CSV loader, as a file or as a stream.

#include "frequencystore/csvfileloader.h"
#include "fuzz/target.h"

#include <QTextStream>

using namespace Velmara::fuzz;

void Velmara::fuzz::run(Input input)
{
    Velmara::CSVFileLoader loader;
    const bool isStream = input.bits()[0];
    QTextStream stream(input.rest());
    const bool isLoaded
        = isDone([&] { isStream ? loader.LoadFile(stream, "stream") : loader.LoadFile(scratchFile(input.rest())); });
    const QStringList names = loader.GetColumnNames();
    require(!isLoaded || !names.isEmpty(), "a file that loads has columns");
    require(names.isEmpty() || loader.CheckHeader(names.join(';')), "columns are found by their names");
    const int rows = names.isEmpty() ? 0 : loader.GetColumn(names[0])->GetValues()->size();
    int line = 0;
    for (const QString& name : names)
        require(loader.GetColumn(name)->GetValues()->size() == rows, "every row has a cell in each column");
    for (int row = 0; row < rows; line = loader.GetLine(row++))
        require(loader.GetLine(row) >= line, "rows stand in the order of the file");
}
