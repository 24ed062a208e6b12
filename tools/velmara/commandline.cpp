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

namespace {

QString listTypes() { return FrequencyStoreListHelper::GetListTypes().join(", "); }

const QString help = "help", type = "type", from = "from", to = "to", skipBad = "skip-bad";

std::optional<Form> extensionOf(const QString& path) { return formNamed(QFileInfo(path).suffix()); }

bool isStream(const QString& path, const QString& name, int descriptor)
{
    return path == "-" || path == "/dev/" + name || path == QString("/dev/fd/%1").arg(descriptor)
        || path == QString("/proc/self/fd/%1").arg(descriptor);
}

} // namespace

CommandLine::CommandLine(const QString& description, const QStringList& examples)
{
    QString text = description + "\n\nExamples:";
    for (const QString& example : examples)
        text += "\n  " + example;
    setApplicationDescription(text);
    setSingleDashWordOptionMode(ParseAsLongOptions);
    addOption({{"h", help}, "Shows this."});
}

void CommandLine::addInputOptions()
{
    addOption(
        {type, QString("What the list is: %1. Needed for CSV and for detection results.").arg(listTypes()), "TYPE"});
    addOption({from,
               "The form of what is read, csv, xml, tagged or packed, if its extension does not tell; "
               "needed for -, which is standard input.",
               "FORM"});
}

void CommandLine::addSkipOption()
{
    addOption({skipBad, "Pass over rows of CSV, and detection results to be converted, that give no entry, "
                        "with a warning; the first one ends the command otherwise."});
}

void CommandLine::addOutput()
{
    addPositionalArgument("OUT", "The file to write; left alone if anything fails.");
    addOption({to, "The form of what is written, likewise; needed for -, which is standard output.", "FORM"});
}

int CommandLine::run(const QStringList& arguments, const std::function<int()>& command, int failed)
{
    try {
        if (!parse(arguments))
            throw UsageError(errorText());
        const bool isHelpWanted = isSet(help);
        if (isHelpWanted)
            print(helpText());
        const int status = isHelpWanted ? Done : command();
        flushOutput();
        return status;
    } catch (const UsageError& error) {
        const QString usage = helpText().section('\n', 0, 0);
        tell(error.GetMessage() + QString("\n%1\n--help tells more.").arg(usage));
        return Misused;
    } catch (const TallyFormException& failure) {
        tell(describe(failure.GetFault()));
    } catch (const std::bad_alloc&) {
        tell("this takes more than the memory of this machine.");
    }
    return failed;
}

QStringList CommandLine::valuesOf(const QString& option) const
{
    QStringList values = value(option).split(',', Qt::SkipEmptyParts);
    for (QString& value : values)
        value = value.trimmed();
    return values;
}

QStringList CommandLine::files(int least, int most) const
{
    const QStringList files = positionalArguments();
    if (files.size() < least)
        throw UsageError("a file is missing.");
    if (files.size() > most)
        throw UsageError(QString("'%1' is one file too many.").arg(files[most]));
    const bool isFormTold = optionNames().contains(from) || optionNames().contains(to);
    if (isFormTold && std::all_of(files.begin(), files.end(), [](const QString& path) { return extensionOf(path); }))
        throw UsageError("the extension of each file tells its form; --from and --to are for others.");
    return files;
}

ListFile CommandLine::input(const QString& path)
{
    const bool isStandardInput = isStream(path, "stdin", STDIN_FILENO);
    if (isStandardInput && std::exchange(m_isStandardInputTaken, true))
        throw UsageError("standard input can only be read once.");
    ListFile file = listFile(path, isStandardInput ? "standard input" : QString(), from);
    file.skipsBad = optionNames().contains(skipBad);
    return file;
}

ListFile CommandLine::output(const QString& path) const
{
    const bool isStandardOutput = isStream(path, "stdout", STDOUT_FILENO);
    return listFile(path, isStandardOutput ? "standard output" : QString(), to);
}

ListFile CommandLine::listFile(const QString& path, const QString& stream, const QString& option) const
{
    const bool isFile = stream.isNull();
    ListFile file{isFile ? path : "-", isFile ? visible(path) : stream, {}, listType(), false, {}};
    file.form = form(file, option);
    if (file.form == Form::Csv && file.type == ListType::Invalid)
        throw UsageError("CSV needs --type, as --type MemoryScan.");
    return file;
}

Form CommandLine::form(const ListFile& file, const QString& option) const
{
    const auto told = formNamed(value(option));
    if (isSet(option) && !told)
        throw UsageError(QString("there is no form '%1'; try csv, xml, tagged or packed.").arg(value(option)));
    if (const auto form = extensionOf(file.path))
        return *form;
    if (told)
        return *told;
    throw UsageError(QString("%1: --%2 must tell the form if no extension (.csv, .xml, .tagged or .packed) does.")
                         .arg(file.name, option));
}

ListType CommandLine::listType() const
{
    if (!isSet(type))
        return ListType::Invalid;
    const ListType listType = FrequencyStoreListHelper().NameToListType(value(type));
    if (listType == ListType::Invalid)
        throw UsageError(QString("there is no list type '%1'; try one of %2.").arg(value(type), listTypes()));
    return listType;
}
