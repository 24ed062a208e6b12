#include "terminal.h"

#include <base/exceptions.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <mutex>

namespace {

void demandOutput(bool isDone)
{
    if (!isDone)
        throw TALLYFORM::TallyException(
            QString("standard output: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
}

bool takesColours()
{
    return isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

QChar sign(QChar c)
{
    constexpr ushort pictures = 0x2400, deleted = 0x7f, pictureOfDeleted = 0x2421;
    const bool isOutside = c.category() == QChar::Other_Control || c.isNonCharacter();
    if (!isOutside)
        return c;
    if (c.unicode() < 0x20)
        return QChar(ushort(pictures + c.unicode()));
    return c.unicode() == deleted ? QChar(pictureOfDeleted) : QChar(QChar::ReplacementCharacter);
}

void report(const QString& work, const std::stop_token& isDone)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any end;
    int seconds = 0;
    while (!end.wait_for(lock, isDone, std::chrono::seconds(1), [&] { return isDone.stop_requested(); }))
        std::fprintf(stderr, "\r%s, %d s ", work.toLocal8Bit().constData(), ++seconds);
    if (seconds > 0)
        std::fputs("\r\033[K", stderr);
}

} // namespace

QString visible(const QString& text)
{
    QString shown = text;
    std::transform(text.begin(), text.end(), shown.begin(), sign);
    return shown;
}

QString shortened(const QString& text, int letters)
{
    if (text.size() <= letters)
        return text;
    const bool cutsCharacter = text[letters - 1].isHighSurrogate();
    return text.left(cutsCharacter ? letters - 1 : letters) + "...";
}

QString counted(int count, const char* one, const char* many)
{
    return QString("%1 %2").arg(count).arg(count == 1 ? one : many);
}

void print(const QString& text) { print(text.toUtf8()); }

void print(const QByteArray& bytes)
{
    demandOutput(std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size()));
}

void flushOutput() { demandOutput(std::fflush(stdout) == 0); }

void tell(const QString& text)
{
    QStringList lines = text.split('\n');
    std::transform(lines.begin(), lines.end(), lines.begin(), visible);
    const QString message = QString("velmara: %1\n").arg(lines.join('\n'));
    std::fflush(stdout);
    std::fputs(message.toLocal8Bit().constData(), stderr);
}

void warn(const QStringList& warnings)
{
    for (const QString& warning : warnings)
        tell("warning: " + warning);
}

QString coloured(const QString& text, Colour colour)
{
    static const bool hasColours = takesColours();
    return hasColours ? QString("\033[%1m%2\033[0m").arg(int(colour)).arg(text) : text;
}

void printLine(const QString& text, Colour colour) { print(coloured(text, colour) + '\n'); }

Progress::Progress(const QString& work)
{
    if (isatty(STDERR_FILENO))
        m_reporter = std::jthread([work](const std::stop_token& isDone) { report(work, isDone); });
}
