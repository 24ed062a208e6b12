#include "commands.h"
#include "terminal.h"

#include <base/errorhandler.h>

#include <QCoreApplication>

#include <cstdio>
#include <string>

namespace {

struct Command
{
    const char* name;
    const char* syntax;
    const char* summary;
    int (*run)(const QStringList& arguments);
};

const Command commands[] = {
    {"check", "FILE...", "check lists and tell each fault", check},
    {"convert", "IN OUT", "convert a list between CSV, XML, tagged and packed binary", convert},
    {"diff", "A B", "tell how two lists differ", diff},
    {"merge", "OUT IN IN...", "join lists and drop what is there twice", merge},
    {"plot", "FILE -o SVG", "draw a list over its frequencies", plot},
    {"schema", "OPTION", "describe all records", schema},
    {"show", "FILE", "show a list as a table or as JSON", show},
};

QString help()
{
    QString text = "Usage: velmara COMMAND [ARGUMENTS]\n\nWorks on frequency lists in files.\n\nCommands:\n";
    for (const Command& command : commands)
        text += QString("  %1 %2\n").arg(QString("%1 %2").arg(command.name, command.syntax), -24).arg(command.summary);
    return text + "\nvelmara COMMAND --help tells more. velmara --version tells the version.\n";
}

int run(const Command& command, int argc, char** argv)
{
    std::string name = std::string("velmara ") + command.name; // as a command's help shows it
    argv[0] = name.data();
    const QCoreApplication application(argc, argv);
    ErrorHandler::Instance().SetMask(0); // the tool tells of failures itself
    return command.run(QCoreApplication::arguments());
}

} // namespace

int main(int argc, char** argv)
{
    const QString word = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    for (const Command& command : commands)
        if (word == command.name)
            return run(command, argc - 1, argv + 1);
    const bool isVersionWanted = word == "--version";
    if (isVersionWanted || word == "--help" || word == "-h") {
        std::fputs(isVersionWanted ? "velmara " VELMARA_VERSION_TEXT "\n" : help().toUtf8().constData(), stdout);
        return std::fflush(stdout) == 0 ? 0 : 1;
    }
    if (!word.isEmpty())
        tell(QString("there is no command '%1'.\n").arg(word));
    std::fputs(help().toUtf8().constData(), stderr);
    return 2;
}
