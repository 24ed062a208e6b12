#include "convert.h"

#include "listfile.h"
#include "messages.h"

#include <QCommandLineParser>
#include <QTextStream>

#include <algorithm>
#include <new>

using namespace TALLYFORM;
using namespace Velmara;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

QString listTypes() { return FrequencyStoreListHelper::GetListTypes().join(QStringLiteral(", ")); }

int usageError(const QCommandLineParser& parser, const QString& message)
{
    QTextStream(stderr) << "velmara: " << message << "\n\n" << parser.helpText();
    return 2;
}

QString countOf(const FrequencyStoreListHelper& helper)
{
    return helper.GetListType() == ListType::DetectionResult
             ? QStringLiteral("%1 detection results").arg(helper.GetDetectionResultList().GetDetectionResult().size())
             : QStringLiteral("%1 entries").arg(helper.GetFrequencyStoreList().GetFrequencyStoreEntry().size());
}

/// Converts; gives what the operator is told of the outcome. Throws TallyFormException.
QString moved(const QString& in, const QString& out, ListType type, QStringList& warnings)
{
    formOf(out); // a wrong name is told before any work
    FrequencyStoreListHelper helper;
    if (type != ListType::Invalid)
        helper.SetListType(type);
    readList(in, helper, warnings);
    writeList(out, helper, warnings);
    return countOf(helper) + QStringLiteral(": %1 -> %2").arg(in, out);
}

int run(const QString& in, const QString& out, ListType type)
{
    QStringList warnings;
    QString outcome, failure;
    try {
        outcome = moved(in, out, type, warnings);
    } catch (const TallyFormException& reason) {
        failure = describe(reason);
    } catch (const std::bad_alloc&) {
        failure = in + QStringLiteral(": too large for the memory of this machine.");
    }
    for (const QString& warning : warnings)
        QTextStream(stderr) << "velmara: warning: " << warning << "\n";
    if (!failure.isEmpty()) {
        QTextStream(stderr) << "velmara: " << failure << "\n";
        return 1;
    }
    QTextStream(stdout) << outcome << "\n";
    return 0;
}

} // namespace

int convert(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Converts a list between CSV (.csv), XML (.xml), tagged (.tagged) and packed binary (.packed).\n"
                       "Detection results are not read from CSV, and become store entries in all forms but CSV.\n"
                       "Example: velmara convert memoryscan.csv memoryscan.xml --type MemoryScan"));
    const QCommandLineOption type(
        QStringLiteral("type"),
        QStringLiteral("What the list is: %1. Needed for CSV and for detection results.").arg(listTypes()),
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
    const ListType listType = FrequencyStoreListHelper().NameToListType(parser.value(type));
    if (listType == ListType::Invalid && parser.isSet(type))
        return usageError(
            parser, QStringLiteral("there is no list type '%1'; try one of %2.").arg(parser.value(type), listTypes()));
    const auto isCsv = [](const QString& file) { return file.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive); };
    if (listType == ListType::Invalid && std::any_of(files.begin(), files.end(), isCsv))
        return usageError(parser, QStringLiteral("convert needs --type for CSV: one of %1.").arg(listTypes()));
    return run(files[0], files[1], listType);
}
