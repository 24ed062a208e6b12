#include "terminal.h"

#include <base/exceptions.h>

#include <unistd.h>

#include <cerrno>
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

} // namespace

void print(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    demandOutput(std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size()));
}

void flushOutput() { demandOutput(std::fflush(stdout) == 0); }

void tell(const QString& text) { std::fputs(("velmara: " + text.toLocal8Bit() + '\n').constData(), stderr); }

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
