#include "base/newfile.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace TALLYFORM {

namespace {

/// The error of a call that gives a negative number for one; a call that a signal has interrupted is made again.
template <class Call> int errorOf(Call call)
{
    for (;;) {
        if (call() >= 0)
            return 0;
        if (errno != EINTR)
            return errno;
    }
}

std::string pathOf(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

} // namespace

int SystemFile::open(const char* path, int flags)
{
    constexpr mode_t mode = 0666; // less what the process masks
    return errorOf([&] { return m_descriptor = ::open(path, flags | O_CLOEXEC, mode); });
}

int SystemFile::openNameless(const char* folder)
{
#ifdef O_TMPFILE
    return open(folder, O_TMPFILE | O_RDWR);
#else
    return ENOTSUP;
#endif
}

int SystemFile::write(const char* bytes, qint64 size)
{
    for (ssize_t count = 0; size > 0; bytes += count, size -= count)
        if (const int error = errorOf([&] { return count = ::write(m_descriptor, bytes, size_t(size)); }))
            return error;
    return 0;
}

int SystemFile::writeAt(qint64 at, const char* bytes, qint64 size)
{
    for (ssize_t count = 0; size > 0; bytes += count, at += count, size -= count)
        if (const int error = errorOf([&] { return count = ::pwrite(m_descriptor, bytes, size_t(size), at); }))
            return error;
    return 0;
}

int SystemFile::copyFrom(const SystemFile& other)
{
    char portion[1 << 16];
    qint64 at = 0;
    for (ssize_t count = 1; count > 0; at += count) {
        if (const int error = errorOf([&] { return count = ::pread(other.m_descriptor, portion, sizeof portion, at); }))
            return error;
        if (const int error = write(portion, count))
            return error;
    }
    return 0;
}

int SystemFile::reserve(qint64 size)
{
    struct stat before
    {};
    if (const int error = errorOf([&] { return fstat(m_descriptor, &before); }))
        return error;
    int error = size > 0 ? EINTR : 0;
    while (error == EINTR)
        error = posix_fallocate(m_descriptor, 0, size);
    const bool isUnknown
        = error == EOPNOTSUPP || error == EINVAL || error == EBADF; // the last, of what stands in for it
    if (error != 0)
        truncate(before.st_size);
    return isUnknown ? 0 : error;
}

int SystemFile::truncate(qint64 size)
{
    return errorOf([&] { return ftruncate(m_descriptor, size); });
}

int SystemFile::sync()
{
    const int error = errorOf([&] { return fdatasync(m_descriptor); });
    return error == EINVAL ? 0 : error; // of what cannot be on a disk
}

int SystemFile::close()
{
    const int result = isOpen() ? ::close(m_descriptor) : 0;
    m_descriptor = -1;
    return result == 0 || errno == EINTR ? 0 : errno;
}

NewFile::NewFile(const std::string& target) : m_target(target)
{
    constexpr size_t longest = 200; // so that there is room behind it in what systems take for a name
    const std::filesystem::path path(target);
    m_folder = path.has_parent_path() ? path.parent_path().native() : ".";
    m_name = m_folder + '/' + path.filename().native().substr(0, longest) + ".XXXXXX";
}

NewFile::~NewFile()
{
    if (m_isNamed)
        unlink(m_name.c_str());
}

template <class Action> int NewFile::withName(Action action)
{
    static const char letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr int attempts = 100;
    int error = EEXIST;
    for (int i = 0; i < attempts && error == EEXIST; ++i) {
        std::generate(m_name.end() - 6, m_name.end(),
                      [] { return letters[QRandomGenerator::global()->bounded(int(sizeof letters) - 1)]; });
        error = action(m_name.c_str());
    }
    m_isNamed = error == 0;
    return error;
}

int NewFile::open()
{
    // It gets its name by that of its descriptor, which not every place knows.
    if (m_file.openNameless(m_folder.c_str()) == 0 && access(pathOf(m_file.descriptor()).c_str(), F_OK) == 0)
        return 0;
    m_file.close();
    return withName([this](const char* name) { return m_file.open(name, O_CREAT | O_EXCL | O_RDWR); });
}

int NewFile::replaceTarget()
{
    const std::string descriptor = pathOf(m_file.descriptor());
    const auto link = [&](const char* name) {
        return errorOf([&] { return linkat(AT_FDCWD, descriptor.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW); });
    };
    if (const int error = m_isNamed ? 0 : withName(link))
        return error;
    const int error = errorOf([&] { return rename(m_name.c_str(), m_target.c_str()); });
    m_isNamed = error != 0;
    return error;
}

} // namespace TALLYFORM
