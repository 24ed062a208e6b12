#include "terminal.h"

#include <base/exceptions.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace {

void demandOutput(bool isDone)
{
    if (!isDone)
        throw TALLYFORM::TallyException(
            QStringLiteral("standard output: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
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
    return text.left(cutsCharacter ? letters - 1 : letters) + QStringLiteral("...");
}

void print(const QString& text) { print(text.toUtf8()); }

void print(const QByteArray& bytes)
{
    demandOutput(std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size()));
}

void flushOutput() { demandOutput(std::fflush(stdout) == 0); }

void tell(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    std::transform(lines.begin(), lines.end(), lines.begin(), visible);
    const QString message = QStringLiteral("velmara: %1\n").arg(lines.join(QLatin1Char('\n')));
    std::fflush(stdout);
    std::fputs(message.toLocal8Bit().constData(), stderr);
}

void warn(const QStringList& warnings)
{
    for (const QString& warning : warnings)
        tell(QStringLiteral("warning: ") + warning);
}

QString coloured(const QString& text, Colour colour)
{
    static const bool hasColours = takesColours();
    return hasColours ? QStringLiteral("\033[%1m%2\033[0m").arg(int(colour)).arg(text) : text;
}

Progress::Progress(const QString& work)
{
    if (isatty(STDERR_FILENO))
        m_reporter = std::thread([this, work] { report(work); });
}

Progress::~Progress()
{
    if (!m_reporter.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_isDone = true;
    }
    m_done.notify_one();
    m_reporter.join();
}

void Progress::report(const QString& work)
{
    int seconds = 0;
    std::unique_lock lock(m_mutex);
    while (!m_done.wait_for(lock, std::chrono::seconds(1), [this] { return m_isDone; }))
        std::fprintf(stderr, "\r%s, %d s ", work.toLocal8Bit().constData(), ++seconds);
    if (seconds > 0)
        std::fputs("\r\033[K", stderr);
}
