#pragma once

#include <QtGlobal>

#include <string>

namespace TALLYFORM {

/// A file of the system. Its operations give the system's error, 0 if there is none.
class SystemFile
{
public:
    SystemFile() = default;
    ~SystemFile() { close(); }
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;

    int open(const char* path, int flags);
    /// Opens one without a name, which ends with this.
    int openNameless(const char* folder);
    int write(const char* bytes, qint64 size);
    /// Writes over what it holds there.
    int writeAt(qint64 at, const char* bytes, qint64 size);
    /// Writes all that another file holds.
    int copyFrom(const SystemFile& other);
    /// Gives it room for so many bytes, as far as the file system knows how to, or leaves it as it was.
    int reserve(qint64 size);
    /// Ends it there.
    int truncate(qint64 size);
    /// Sees to it that all is on the disk, as far as the file system can tell.
    int sync();
    int close();

    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

/// A file in the making beside the one that it may replace, with no name of its own until then where the system allows
/// that. Unless it has replaced that one, nothing of it stays.
class NewFile
{
public:
    explicit NewFile(const std::string& target);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    int open();
    SystemFile& file() { return m_file; }
    int replaceTarget();

private:
    /// Runs an action with one name after the other until it does not fail for the name.
    template <class Action> int withName(Action action);

    SystemFile m_file;
    std::string m_target;
    std::string m_folder;
    std::string m_name; ///< made ahead, for to remove the file must not take memory
    bool m_isNamed = false;
};

} // namespace TALLYFORM
