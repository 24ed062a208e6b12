#include "commandline.h"

#include "messages.h"
#include "terminal.h"

#include <QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <new>
#include <utility>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

QString listTypes() { return FrequencyStoreListHelper::GetListTypes().join(QStringLiteral(", ")); }

const QString help = QStringLiteral("help"), type = QStringLiteral("type"), from = QStringLiteral("from"),
              to = QStringLiteral("to"), skipBad = QStringLiteral("skip-bad");

std::optional<Form> extensionOf(const QString& path) { return formNamed(QFileInfo(path).suffix()); }

/// "-" for the other names of a standard stream.
QString nameOfStream(const QString& path, const char* stream, int descriptor)
{
    const QStringList names{QStringLiteral("/dev/%1").arg(QLatin1String(stream)),
                            QStringLiteral("/dev/fd/%1").arg(descriptor),
                            QStringLiteral("/proc/self/fd/%1").arg(descriptor)};
    return names.contains(path) ? QStringLiteral("-") : path;
}

} // namespace

CommandLine::CommandLine(const QString& description, const QStringList& examples)
{
    QString text = description + QStringLiteral("\n\nExamples:");
    for (const QString& example : examples)
        text += QStringLiteral("\n  ") + example;
    m_parser.setApplicationDescription(text);
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
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

void CommandLine::addSkipOption()
{
    addFlag(skipBad, QStringLiteral("Pass over rows of CSV, and detection results to be converted, that give no entry, "
                                    "with a warning; the first one ends the command otherwise."));
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

void CommandLine::report(const TallyFormException& failure) { tell(describe(failure.GetFault())); }

QStringList CommandLine::values(const QString& option) const
{
    QStringList values = value(option).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString& value : values)
        value = value.trimmed();
    return values;
}

QStringList CommandLine::files(int least, int most) const
{
    const QStringList files = m_parser.positionalArguments();
    if (files.size() < least)
        throw UsageError(QStringLiteral("a file is missing."));
    if (files.size() > most)
        throw UsageError(QStringLiteral("'%1' is one file too many.").arg(files[most]));
    const QStringList options = m_parser.optionNames();
    const bool isFormTold = options.contains(from) || options.contains(to);
    if (isFormTold && std::all_of(files.begin(), files.end(), [](const QString& path) { return extensionOf(path); }))
        throw UsageError(QStringLiteral("the extension of each file tells its form; --from and --to are for others."));
    return files;
}

ListFile CommandLine::input(const QString& path)
{
    ListFile file = listFile(nameOfStream(path, "stdin", STDIN_FILENO), from, QStringLiteral("standard input"));
    if (file.isStream() && std::exchange(m_isStandardInputTaken, true))
        throw UsageError(QStringLiteral("standard input can only be read once."));
    file.skipsBad = m_parser.optionNames().contains(skipBad);
    return file;
}

ListFile CommandLine::output(const QString& path) const
{
    return listFile(nameOfStream(path, "stdout", STDOUT_FILENO), to, QStringLiteral("standard output"));
}

ListFile CommandLine::listFile(const QString& path, const QString& option, const QString& stream) const
{
    const bool isStream = path == QLatin1String("-");
    ListFile file{path, isStream ? stream : visible(path), {}, listType(), false, {}};
    file.form = form(file, option);
    if (file.form == Form::Csv && file.type == ListType::Invalid)
        throw UsageError(QStringLiteral("CSV needs --type, as --type MemoryScan."));
    return file;
}

Form CommandLine::form(const ListFile& file, const QString& option) const
{
    const auto told = formNamed(value(option));
    if (isSet(option) && !told)
        throw UsageError(QStringLiteral("there is no form '%1'; try csv, xml, tagged or packed.").arg(value(option)));
    if (const auto form = extensionOf(file.path))
        return *form;
    if (told)
        return *told;
    throw UsageError(
        QStringLiteral("%1: --%2 must tell the form if no extension (.csv, .xml, .tagged or .packed) does.")
            .arg(file.name, option));
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
