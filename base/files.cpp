#include "base/files.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <limits>
#include <optional>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace TALLYFORM {

namespace {

namespace fs = std::filesystem;

/// A link in there leads to what is open, which may have no name or that of another file.
bool isOfProcesses(const fs::path& folder)
{
    std::error_code error;
    return fs::canonical(folder.empty() ? "." : folder, error).native().rfind("/proc/", 0) == 0;
}

/// The file, there or not, that a save to a path replaces. None if what is there has to be written as it is, such as a
/// pipe or a device, or cannot be written at all, of which the opening tells. QSaveFile would follow links by name,
/// and so miss the file behind "../name" in a folder that is a link itself.
std::optional<fs::path> replacedBy(const QString& name)
{
    if (name.isEmpty())
        return std::nullopt;
    constexpr int mostLinks = 40; // as many as the system follows
    std::error_code error;
    fs::path path = QFile::encodeName(name).toStdString();
    for (int links = 0; links <= mostLinks; ++links) {
        switch (fs::symlink_status(path, error).type()) {
        case fs::file_type::symlink:
            if (isOfProcesses(path.parent_path()))
                return std::nullopt;
            path = path.parent_path() / fs::read_symlink(path, error);
            break;
        case fs::file_type::regular:
        case fs::file_type::directory:
        case fs::file_type::not_found: return path;
        default: return std::nullopt;
        }
    }
    return std::nullopt;
}

#ifdef Q_OS_UNIX
/// Gives a new file the owner, group and permissions of the one that it replaces. Not everyone may give files away:
/// rights of a group that could not be kept are dropped.
void takeAfter(const fs::path& replaced, int file)
{
    struct stat old
    {};
    if (stat(replaced.c_str(), &old) != 0)
        return;
    const bool isGroupKept = fchown(file, old.st_uid, old.st_gid) == 0 || fchown(file, uid_t(-1), old.st_gid) == 0;
    fchmod(file, old.st_mode & (isGroupKept ? 0777 : 0707));
}

/// Whether all is on the disk, as far as the file system can tell. QSaveFile asks it to, but not whether it did.
bool isSynced(int file)
{
    int result = 0;
    do
        result = fdatasync(file);
    while (result != 0 && errno == EINTR);
    return result == 0 || errno == EINVAL;
}
#else
void takeAfter(const fs::path&, int) {}
bool isSynced(int) { return true; }
#endif

/// The system's own word for a file that did not take all its bytes is often "unknown".
SaveResult fail(const QFileDevice& file, QString& reason)
{
    reason
        = file.isOpen() ? QStringLiteral("Not all bytes could be written: ") + file.errorString() : file.errorString();
    return file.isOpen() ? SaveResult::NotWritten : SaveResult::NotOpened;
}

/// A file that is written while its content comes; what is no regular file waits for all of it.
class Saver
{
public:
    explicit Saver(const QString& path) : m_path(path), m_replaced(replacedBy(path)) {}

    void write(const char* bytes, int size)
    {
        if (!m_replaced)
            m_held.append(bytes, size);
        else if (m_file || open())
            m_isWritten = m_isWritten && m_file->write(bytes, size) == size;
    }

    SaveResult finish(QString& reason)
    {
        write(nullptr, 0); // opens the file, where that was all
        return m_replaced ? commit(reason) : writeHeld(reason);
    }

private:
    bool open()
    {
        m_file.emplace(QFile::decodeName(QByteArray::fromStdString(m_replaced->native())));
        m_isWritten = m_file->open(QIODevice::WriteOnly);
        if (m_isWritten)
            takeAfter(*m_replaced, m_file->handle());
        return m_isWritten;
    }

    /// Without the flush a full disk goes unnoticed: commit() alone would put a truncated file in place of a good one.
    SaveResult commit(QString& reason)
    {
        if (!m_isWritten || !m_file->flush() || !isSynced(m_file->handle()))
            return fail(*m_file, reason);
        if (m_file->commit())
            return SaveResult::Saved;
        reason = m_file->errorString();
        return SaveResult::NotWritten;
    }

    SaveResult writeHeld(QString& reason) const
    {
        QFile device(m_path);
        const bool isWritten
            = device.open(QIODevice::WriteOnly) && device.write(m_held) == m_held.size() && device.flush();
        return isWritten ? SaveResult::Saved : fail(device, reason);
    }

    QString m_path;
    std::optional<fs::path> m_replaced;
    std::optional<QSaveFile> m_file;
    bool m_isWritten = true;
    QByteArray m_held;
};

std::atomic<qint64> inputLimit = qint64(1) << 30;

} // namespace

qint64 GetInputLimit() { return inputLimit.load(std::memory_order_relaxed); }
void SetInputLimit(qint64 bytes) { inputLimit.store(bytes, std::memory_order_relaxed); }

/// A file that tells its size is refused ahead of its first byte.
LimitedFile::LimitedFile(QFile& file, qint64 limit) : m_file(file), m_limit(limit) { check(file.size() - file.pos()); }

void LimitedFile::check(qint64 size)
{
    if (size > m_limit)
        m_reason = QStringLiteral("Larger than the limit of %1 bytes.").arg(m_limit);
}

int LimitedFile::read(char* to, int size)
{
    if (!m_reason.isNull())
        return 0;
    int filled = 0;
    for (qint64 count = 1; count > 0 && filled < size; filled += int(count)) // a pipe may give less than it has
        count = std::max<qint64>(0, m_file.read(to + filled, size - filled));
    m_size += filled;
    if (m_file.error() != QFileDevice::NoError)
        m_reason = m_file.errorString();
    else
        check(m_size);
    return m_reason.isNull() ? filled : 0;
}

bool ReadFile(QFile& file, QByteArray& content, QString& reason)
{
    constexpr int portion = 1 << 20; // a device may have no end, and does not tell its size
    constexpr qint64 most = std::numeric_limits<int>::max() - 2 * portion; // that a QByteArray has room for
    LimitedFile input(file, std::min(most, GetInputLimit()));
    content.clear();
    if (input.reason().isNull())
        content.reserve(int(file.size() - file.pos()) + portion);
    for (int read = portion; read == portion;) {
        const int before = content.size();
        content.resize(before + portion);
        read = input.read(content.data() + before, portion);
        content.truncate(before + read);
    }
    reason = input.reason();
    return reason.isNull();
}

SaveResult SaveFile(const QString& path, const QByteArray& content, QString& reason)
{
    const auto produce = [&](const ByteDrain& drain) { return drain(content.constData(), content.size()), true; };
    return SaveFile(path, produce, reason);
}

SaveResult SaveFile(const QString& path, const std::function<bool(const ByteDrain&)>& produce, QString& reason)
{
    if (path.contains(QChar::Null)) { // which would end the name for the system
        reason = QStringLiteral("A file name cannot hold a zero character.");
        return SaveResult::NotOpened;
    }
    Saver saver(path);
    const bool isProduced = produce([&](const char* bytes, int size) { saver.write(bytes, size); });
    return isProduced ? saver.finish(reason) : SaveResult::NotProduced;
}

} // namespace TALLYFORM
