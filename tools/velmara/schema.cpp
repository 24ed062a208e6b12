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
    QString option;
    QString description;
    QString (*write)();
};

const Writer writers[] = {
    {"xsd", "As a schema, for programs that validate or edit XML.", recordsAsXsd},
    {"markdown", "As a page to read.", recordsAsMarkdown},
    {"json", "As data, for programs.", recordsAsJson},
    {"csv", "The columns of CSV files instead, as a page to read.", columnsAsMarkdown},
};

template <class Enumeration> QString wordAt(const QStringList& words, Enumeration value) { return words[int(value)]; }

} // namespace

int schema(const QStringList& arguments)
{
    CommandLine line("Tells what all records are made of, and how their members look in files.",
                     {"velmara schema --xsd > velmara.xsd", "velmara schema --json | jq '.records[].name'"});
    for (const Writer& writer : writers)
        line.addOption({writer.option, writer.description});
    return line.run(arguments, [&] {
        line.files(0, 0);
        QVector<Writer> chosen;
        std::copy_if(std::begin(writers), std::end(writers), std::back_inserter(chosen),
                     [&](const Writer& writer) { return line.isSet(writer.option); });
        if (chosen.isEmpty())
            throw UsageError("say in which form: --xsd, --markdown, --json or --csv.");
        if (chosen.size() > 1)
            throw UsageError(QString("--%1 and --%2 exclude each other.").arg(chosen[0].option, chosen[1].option));
        print(chosen.first().write());
        return CommandLine::Done;
    });
}

QString wordFor(MemberDescription::Kind kind)
{
    return wordAt(
        {"double", "int", "unsigned int", "unsigned int64", "bool", "text", "date-time", "enumeration", "record"},
        kind);
}

QString wordFor(MemberDescription::Need need) { return wordAt({"optional", "mandatory", "alternative"}, need); }

QString wordFor(MemberDescription::Form form) { return wordAt({"element", "attribute", "content"}, form); }

QString textOf(double number) { return QString::number(number, 'g', QLocale::FloatingPointShortest); }
