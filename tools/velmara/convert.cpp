#include "convert.h"

#include "listfile.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

using namespace TALLYFORM;
using namespace Velmara;

namespace {

QString describe(const TallyFormException& failure)
{
    return failure.GetOrigin().isEmpty() ? failure.GetMessage()
                                         : failure.GetOrigin() + QStringLiteral(": ") + failure.GetMessage();
}

int usageError(const QCommandLineParser& parser, const QString& message)
{
    QTextStream(stderr) << "velmara: " << message << "\n\n" << parser.helpText();
    return 2;
}

int run(const QString& in, const QString& out, FileHandling::ListType type)
{
    try {
        formOf(out); // a wrong name is told before any work
        const FrequencyStoreList list = readList(in, type);
        writeList(out, list, type);
        QTextStream(stdout) << list.GetFrequencyStoreEntry().size() << " entries: " << in << " -> " << out << "\n";
        return 0;
    } catch (const TallyFormException& failure) {
        QTextStream(stderr) << "velmara: " << describe(failure) << "\n";
        return 1;
    }
}

} // namespace

int convert(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Converts a list between CSV (.csv), XML (.xml), tagged (.tagged) and packed binary (.packed).\n"
                       "Example: velmara convert memoryscan.csv memoryscan.xml --type MemoryScan"));
    const QCommandLineOption type(QStringLiteral("type"),
                                  QStringLiteral("What the list is, which decides the CSV format: MemoryScan."),
                                  QStringLiteral("type"));
    parser.addOption(type);
    const QCommandLineOption help = parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("IN"), QStringLiteral("The file to read."),
                                 QStringLiteral("convert IN"));
    parser.addPositionalArgument(QStringLiteral("OUT"),
                                 QStringLiteral("The file to write; left alone if anything fails."));
    if (!parser.parse(arguments))
        return usageError(parser, parser.errorText());
    if (parser.isSet(help)) {
        QTextStream(stdout) << parser.helpText();
        return 0;
    }
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2)
        return usageError(parser, QStringLiteral("convert needs a file to read and a file to write."));
    const QString name = parser.value(type);
    if (name != QLatin1String("MemoryScan"))
        return usageError(parser, name.isEmpty()
                                      ? QStringLiteral("convert needs --type.")
                                      : QStringLiteral("there is no list type '%1'; try MemoryScan.").arg(name));
    return run(files[0], files[1], FrequencyStoreListHelper().NameToListType(name));
}
