#pragma once

#include <QStringList>

#include <thread>

/// Text from a file with signs in place of control characters, so that it neither breaks a line nor commands a
/// terminal.
QString visible(const QString& text);

/// The beginning of a text, and dots if that is not all.
QString shortened(const QString& text, int letters);

/// "1 entry", "3 entries"
QString counted(int count, const char* one, const char* many);

/// Puts text on standard output, in UTF-8 whatever the locale. Throws TallyException if it does not take it.
void print(const QString& text);
/// The same with bytes, as they are.
void print(const QByteArray& bytes);
/// Hands on what print still holds. Throws as above.
void flushOutput();
/// Tells the operator something, on standard error, behind what was printed; control characters but line ends become
/// visible.
void tell(const QString& text);

/// Tells of warnings, likewise.
void warn(const QStringList& warnings);

enum class Colour { Red = 31, Green = 32, Yellow = 33, Bold = 1 };
/// The text in colour if standard output is a terminal and the operator wants colours there.
QString coloured(const QString& text, Colour colour);
/// Prints a line of such text.
void printLine(const QString& text, Colour colour);

/// Says on standard error, if that is a terminal, what is being done and for how long, once it has taken a second.
class Progress
{
public:
    explicit Progress(const QString& work);

private:
    std::jthread m_reporter;
};
