#include "schema.h"

#include "commandline.h"
#include "commands.h"
#include "terminal.h"

#include <QLocale>

using namespace Velmara;

namespace {

struct Writer
{
    QString option;
    QString description;
    QString (*write)();
};

const QVector<Writer>& writers()
{
    static const QVector<Writer> all{
        {QStringLiteral("xsd"), QStringLiteral("As a schema, for programs that validate or edit XML."), recordsAsXsd},
        {QStringLiteral("markdown"), QStringLiteral("As a page to read."), recordsAsMarkdown},
        {QStringLiteral("json"), QStringLiteral("As data, for programs."), recordsAsJson},
        {QStringLiteral("csv"), QStringLiteral("The columns of CSV files instead, as a page to read."),
         columnsAsMarkdown},
    };
    return all;
}

/// The one writer that the command line names. Throws UsageError.
const Writer& chosenWriter(const CommandLine& line)
{
    const Writer* chosen = nullptr;
    for (const Writer& writer : writers()) {
        if (!line.isSet(writer.option))
            continue;
        if (chosen)
            throw UsageError(QStringLiteral("--%1 and --%2 exclude each other.").arg(chosen->option, writer.option));
        chosen = &writer;
    }
    if (!chosen)
        throw UsageError(QStringLiteral("say in which form: --xsd, --markdown, --json or --csv."));
    return *chosen;
}

template <class Enumeration> QString wordAt(const QStringList& words, Enumeration value) { return words[int(value)]; }

} // namespace

int schema(const QStringList& arguments)
{
    CommandLine line(QStringLiteral("Tells what all records are made of, and how their members look in files."),
                     {QStringLiteral("velmara schema --xsd > velmara.xsd"),
                      QStringLiteral("velmara schema --json | jq '.records[].name'")});
    for (const Writer& writer : writers())
        line.addFlag(writer.option, writer.description);
    return line.run(arguments, [&] {
        line.files(0, 0);
        print(chosenWriter(line).write());
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
