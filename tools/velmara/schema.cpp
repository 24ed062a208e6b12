#include "schema.h"

#include "commandline.h"
#include "commands.h"
#include "terminal.h"

#include <QLocale>

#include <algorithm>

using namespace Velmara;

namespace {

struct Writer
{
    QLatin1String option;
    QLatin1String description;
    QString (*write)();
};

const Writer writers[] = {
    {QLatin1String("xsd"), QLatin1String("As a schema, for programs that validate or edit XML."), recordsAsXsd},
    {QLatin1String("markdown"), QLatin1String("As a page to read."), recordsAsMarkdown},
    {QLatin1String("json"), QLatin1String("As data, for programs."), recordsAsJson},
    {QLatin1String("csv"), QLatin1String("The columns of CSV files instead, as a page to read."), columnsAsMarkdown},
};

template <class Enumeration> QString wordAt(const QStringList& words, Enumeration value) { return words[int(value)]; }

} // namespace

int schema(const QStringList& arguments)
{
    CommandLine line(QStringLiteral("Tells what all records are made of, and how their members look in files."),
                     {QStringLiteral("velmara schema --xsd > velmara.xsd"),
                      QStringLiteral("velmara schema --json | jq '.records[].name'")});
    for (const Writer& writer : writers)
        line.addOption({writer.option, writer.description});
    return line.run(arguments, [&] {
        line.files(0, 0);
        QVector<Writer> chosen;
        std::copy_if(std::begin(writers), std::end(writers), std::back_inserter(chosen),
                     [&](const Writer& writer) { return line.isSet(writer.option); });
        if (chosen.isEmpty())
            throw UsageError(QStringLiteral("say in which form: --xsd, --markdown, --json or --csv."));
        if (chosen.size() > 1)
            throw UsageError(
                QStringLiteral("--%1 and --%2 exclude each other.").arg(chosen[0].option, chosen[1].option));
        print(chosen.first().write());
        return CommandLine::Done;
    });
}

QString wordFor(MemberDescription::Kind kind)
{
    return wordAt({QStringLiteral("double"), QStringLiteral("int"), QStringLiteral("unsigned int"),
                   QStringLiteral("unsigned int64"), QStringLiteral("bool"), QStringLiteral("text"),
                   QStringLiteral("date-time"), QStringLiteral("enumeration"), QStringLiteral("record")},
                  kind);
}

QString wordFor(MemberDescription::Need need)
{
    return wordAt({QStringLiteral("optional"), QStringLiteral("mandatory"), QStringLiteral("alternative")}, need);
}

QString wordFor(MemberDescription::Form form)
{
    return wordAt({QStringLiteral("element"), QStringLiteral("attribute"), QStringLiteral("content")}, form);
}

QString textOf(double number) { return QString::number(number, 'g', QLocale::FloatingPointShortest); }
