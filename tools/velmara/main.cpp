#include "convert.h"

#include <base/errorhandler.h>

#include <QCoreApplication>
#include <QTextStream>

namespace {

const char help[] = R"(Usage: velmara COMMAND [ARGUMENTS]

Works on frequency lists in files.

Commands:
  convert IN OUT [--type TYPE]   convert a list between CSV, XML, tagged and packed binary

velmara COMMAND --help tells more. velmara --version tells the version.
)";

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("velmara"));
    ErrorHandler::Instance().SetMask(0); // the tool tells of failures itself
    QStringList arguments = application.arguments();
    const QString command = arguments.value(1);
    if (command == QLatin1String("convert")) {
        arguments.removeAt(1);
        return convert(arguments);
    }
    if (command == QLatin1String("--version")) {
        QTextStream(stdout) << "velmara " VELMARA_VERSION_TEXT "\n";
        return 0;
    }
    if (command == QLatin1String("--help") || command == QLatin1String("-h")) {
        QTextStream(stdout) << help;
        return 0;
    }
    QTextStream(stderr) << (command.isEmpty() ? QString()
                                              : QStringLiteral("velmara: there is no command '%1'.\n\n").arg(command))
                        << help;
    return 2;
}
