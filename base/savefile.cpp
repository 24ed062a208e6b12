#include "base/savefile.h"

#include "base/filesaver.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

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
/// pipe or a device, or cannot be written at all, of which the opening tells. Links are followed from folder to folder,
/// not by name, which would miss the file behind "../name" in a folder that is a link itself.
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
        case fs::file_type::not_found: return path;
        default: return std::nullopt;
        }
    }
    return std::nullopt;
}

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

/// The error of writing to a file, 0 if it may be written.
int accessErrorOf(const fs::path& file) { return faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno; }

} // namespace

FileSaver::FileSaver(const QString& path)
    : m_path(QFile::encodeName(path).toStdString()), m_replaced(replacedBy(path)),
      m_refusal(path.contains(QChar::Null) // which would end the name for the system
                    ? QStringLiteral("A file name cannot hold a zero character.")
                    : QString())
{}

FileSaver::~FileSaver() = default;

void FileSaver::write(const char* bytes, int size)
{
    if (!m_isBegun)
        begin();
    m_size += size;
    if (!m_refusal.isNull())
        return;
    if (!m_new)
        m_held.append(bytes, size);
    else if (m_error == 0)
        m_error = m_new->file().write(bytes, size);
}

void FileSaver::rewrite(qint64 at, const char* bytes, int size)
{
    if (!m_refusal.isNull())
        return;
    if (!m_new)
        m_held.replace(int(at), size, bytes, size);
    else if (m_error == 0)
        m_error = m_new->file().writeAt(at, bytes, size);
}

SaveResult FileSaver::finish(QString& reason)
{
    write(nullptr, 0); // makes the file, where that was all
    if (!m_refusal.isNull())
        return reason = m_refusal, SaveResult::NotOpened;
    if (!m_replaced)
        return writeToDevice(reason);
    if (!m_new)
        return overwrite(reason);
    const bool isWhole = m_error == 0 && isDone(m_new->file().sync());
    return isWhole ? replace(reason) : fail(reason);
}

void FileSaver::begin()
{
    m_isBegun = true;
    if (!m_replaced || !m_refusal.isNull())
        return;
    const int accessError = accessErrorOf(*m_replaced);
    if (accessError != 0 && accessError != ENOENT) {
        m_refusal = qt_error_string(accessError);
    } else if (const int error = m_new.emplace(m_replaced->native()).open()) {
        m_new.reset();
        m_hindrance = QStringLiteral("No file can be made in '%1': %2").arg(folder(), qt_error_string(error));
        if (accessError == ENOENT)
            m_refusal = m_hindrance;
    } else {
        takeAfter(*m_replaced, m_new->file().descriptor());
    }
}

QString FileSaver::folder() const
{
    const fs::path folder = m_replaced->parent_path();
    return folder.empty() ? QStringLiteral(".") : QFile::decodeName(folder.c_str());
}

SaveResult FileSaver::fail(QString& reason) const
{
    reason = QStringLiteral("Not all bytes could be written: ") + qt_error_string(m_error);
    if (!m_hindrance.isNull())
        reason += QStringLiteral(" (%1)").arg(m_hindrance);
    return SaveResult::NotWritten;
}

SaveResult FileSaver::replace(QString& reason)
{
    const int error = m_new->replaceTarget();
    if (error == 0)
        return SaveResult::Saved;
    m_hindrance = QStringLiteral("It cannot be replaced: %1").arg(qt_error_string(error));
    return overwrite(reason);
}

int FileSaver::copyTo(SystemFile& file)
{
    return m_new ? file.copyFrom(m_new->file()) : file.write(m_held.constData(), m_held.size());
}

/// Only where no new file can take the place of the old one: what interrupts it leaves neither.
SaveResult FileSaver::overwrite(QString& reason)
{
    SystemFile old;
    const bool isSaved = isDone(old.open(m_replaced->c_str(), O_WRONLY)) && isDone(old.reserve(m_size))
                      && isDone(copyTo(old)) && isDone(old.truncate(m_size)) && isDone(old.sync());
    return isSaved ? SaveResult::Saved : fail(reason);
}

SaveResult FileSaver::writeToDevice(QString& reason)
{
    SystemFile device;
    if (const int error = device.open(m_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC)) {
        reason = qt_error_string(error);
        return SaveResult::NotOpened;
    }
    return isDone(copyTo(device)) && isDone(device.close()) ? SaveResult::Saved : fail(reason);
}

SaveResult SaveFile(const QString& path, const QByteArray& content, QString& reason)
{
    const auto produce = [&](const ByteSink& sink) { return sink(content.constData(), content.size()), true; };
    return SaveFile(path, produce, reason);
}

SaveResult SaveFile(const QString& path, const std::function<bool(const ByteSink&)>& produce, QString& reason)
{
    FileSaver saver(path);
    const bool isProduced = produce([&](const char* bytes, int size) { saver.write(bytes, size); });
    return isProduced ? saver.finish(reason) : SaveResult::NotProduced;
}

} // namespace TALLYFORM
