#include "commandline.h"
#include "commands.h"
#include "content.h"
#include "conversion.h"
#include "terminal.h"

using namespace Velmara;

int convert(const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("Converts a list between CSV (.csv), XML (.xml), tagged (.tagged) and packed binary (.packed).\n"
                       "Detection results are not read from CSV, and become store entries in all forms but CSV."),
        {QStringLiteral("velmara convert memoryscan.csv memoryscan.xml --type MemoryScan"),
         QStringLiteral("velmara convert results.xml - --to csv --type DetectionResult")});
    line.addArgument(QStringLiteral("IN"), QStringLiteral("The file to read."), QStringLiteral("IN"));
    line.addArgument(QStringLiteral("OUT"), QStringLiteral("The file to write; left alone if anything fails."),
                     QStringLiteral("OUT"));
    line.addInputOptions();
    line.addSkipOption();
    line.addOutputOption();
    return line.run(arguments, [&] {
        const QStringList files = line.files(2, 2);
        const ListFile in = line.input(files[0]), out = line.output(files[1]);
        FrequencyStoreListHelper helper;
        readList(in, helper);
        if (in.type == FrequencyStoreListHelper::ListType::DetectionResult)
            convertResults(in, helper, out.form);
        writeList(out, helper);
        if (!out.isStream())
            print(QStringLiteral("%1: %2 -> %3\n").arg(countIn(helper), in.name, out.name));
        return CommandLine::Done;
    });
}
