#include "commandline.h"

#include "messages.h"
#include "terminal.h"

#include <QFileInfo>

#include <new>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

QString listTypes() { return FrequencyStoreListHelper::GetListTypes().join(QStringLiteral(", ")); }

const QString help = QStringLiteral("help"), type = QStringLiteral("type"), from = QStringLiteral("from"),
              to = QStringLiteral("to");

} // namespace

CommandLine::CommandLine(const QString& description, const QStringList& examples)
{
    QString text = description + QStringLiteral("\n\nExamples:");
    for (const QString& example : examples)
        text += QStringLiteral("\n  ") + example;
    m_parser.setApplicationDescription(text);
    m_parser.addOption({{QStringLiteral("h"), help}, QStringLiteral("Shows this.")});
}

void CommandLine::addArgument(const QString& name, const QString& description, const QString& syntax)
{
    m_parser.addPositionalArgument(name, description, syntax);
}

void CommandLine::addFlag(const QString& name, const QString& description) { m_parser.addOption({name, description}); }

void CommandLine::addValue(const QStringList& names, const QString& placeholder, const QString& description)
{
    m_parser.addOption({names, description, placeholder});
}

void CommandLine::addInputOptions()
{
    addValue({type}, QStringLiteral("TYPE"),
             QStringLiteral("What the list is: %1. Needed for CSV and for detection results.").arg(listTypes()));
    addValue({from}, QStringLiteral("FORM"),
             QStringLiteral("The form of what is read, csv, xml, tagged or packed, if its extension does not tell; "
                            "needed for -, which is standard input."));
}

void CommandLine::addOutputOption()
{
    addValue({to}, QStringLiteral("FORM"),
             QStringLiteral("The form of what is written, likewise; needed for -, which is standard output."));
}

int CommandLine::run(const QStringList& arguments, const std::function<int()>& command, int failed)
{
    try {
        if (!m_parser.parse(arguments))
            throw UsageError(m_parser.errorText());
        const bool isHelpWanted = m_parser.isSet(help);
        if (isHelpWanted)
            print(m_parser.helpText());
        const int status = isHelpWanted ? Done : command();
        flushOutput();
        return status;
    } catch (const UsageError& error) {
        const QString usage = m_parser.helpText().section(QLatin1Char('\n'), 0, 0);
        tell(error.GetMessage() + QStringLiteral("\n%1\n--help tells more.").arg(usage));
        return Misused;
    } catch (const TallyFormException& failure) {
        report(failure);
    } catch (const std::bad_alloc&) {
        tell(QStringLiteral("this takes more than the memory of this machine."));
    }
    return failed;
}

void CommandLine::report(const TallyFormException& failure) { tell(describe(failure)); }

QStringList CommandLine::values(const QString& option) const
{
    return value(option).split(QLatin1Char(','), Qt::SkipEmptyParts);
}

QStringList CommandLine::files(int least, int most) const
{
    const QStringList files = m_parser.positionalArguments();
    if (files.size() < least)
        throw UsageError(QStringLiteral("a file is missing."));
    if (files.size() > most)
        throw UsageError(QStringLiteral("'%1' is one file too many.").arg(files[most]));
    return files;
}

ListFile CommandLine::input(const QString& path) const
{
    const ListFile file{path == QLatin1String("-") ? QStringLiteral("/dev/stdin") : path, form(path, from), listType()};
    if (file.form == Form::Csv && file.type == ListType::Invalid)
        throw UsageError(QStringLiteral("CSV needs --type: one of %1.").arg(listTypes()));
    return file;
}

ListFile CommandLine::output(const QString& path) const
{
    const ListFile file{path == QLatin1String("-") ? QStringLiteral("/dev/stdout") : path, form(path, to), listType()};
    if (file.form == Form::Csv && file.type == ListType::Invalid)
        throw UsageError(QStringLiteral("CSV needs --type: one of %1.").arg(listTypes()));
    return file;
}

Form CommandLine::form(const QString& path, const QString& option) const
{
    const bool isNamed = isSet(option);
    const QString name = isNamed ? value(option) : QFileInfo(path).suffix();
    if (const auto form = formNamed(name))
        return *form;
    if (isNamed)
        throw UsageError(QStringLiteral("there is no form '%1'; try csv, xml, tagged or packed.").arg(name));
    throw UsageError(QStringLiteral("%1: the extension must be .csv, .xml, .tagged or .packed, or --%2 tell the form.")
                         .arg(path, option));
}

ListType CommandLine::listType() const
{
    if (!isSet(type))
        return ListType::Invalid;
    const ListType listType = FrequencyStoreListHelper().NameToListType(value(type));
    if (listType == ListType::Invalid)
        throw UsageError(QStringLiteral("there is no list type '%1'; try one of %2.").arg(value(type), listTypes()));
    return listType;
}
