#pragma once

#include "listfile.h"

#include <QCommandLineParser>

#include <functional>

/// A command line that does not say what is to be done.
class UsageError : public TALLYFORM::TallyException
{
public:
    using TallyException::TallyException;
};

/// The command line of one command: what all of them share, and the answers to --help and to failures.
class CommandLine : public QCommandLineParser
{
public:
    enum Status { Done = 0, Failed = 1, Misused = 2 };

    /// `examples` are whole lines that an operator may try.
    CommandLine(const QString& description, const QStringList& examples);

    /// Adds --type and --from, which tell what a file to read is.
    void addInputOptions();
    /// Adds --skip-bad, which lets it go on behind what gives no entry.
    void addSkipOption();
    /// Adds the argument for a file to write, and --to, which tells its form.
    void addOutput();

    /// Parses the arguments and runs the command, which gives the exit status. Tells of what it throws, a UsageError
    /// with the usage, and gives `failed`, or Misused for that.
    int run(const QStringList& arguments, const std::function<int()>& command, int failed = Failed);

    /// The values of an option that takes several, separated by commas.
    QStringList valuesOf(const QString& option) const;
    /// The arguments that are no options. Throws UsageError if they are too few or too many.
    QStringList files(int least, int most) const;
    /// A file to read. Throws UsageError, also for standard input if it is read already.
    ListFile input(const QString& path);
    /// A file to write. Throws UsageError.
    ListFile output(const QString& path) const;

private:
    /// A file, or a standard stream that has a name. Throws UsageError.
    ListFile listFile(const QString& path, const QString& stream, const QString& option) const;
    /// The form that the path's extension tells, else an option.
    Form form(const ListFile& file, const QString& option) const;
    ListType listType() const;

    bool m_isStandardInputTaken = false;
};
