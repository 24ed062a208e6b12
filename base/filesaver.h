#pragma once

#include "base/newfile.h"
#include "base/savefile.h"

#include <QByteArray>

#include <filesystem>
#include <optional>

namespace TALLYFORM {

/// Collects the content of a file as SaveFile does: in a new file beside the one that it is to replace. Where none can
/// be made there, or the old one is no regular file, it waits in memory, and is written where it belongs once it is
/// whole.
class TALLYBASE_EXPORT FileSaver
{
public:
    explicit FileSaver(const QString& path);
    /// Unless it was finished, the path holds what it held.
    ~FileSaver();
    FileSaver(const FileSaver&) = delete;
    FileSaver& operator=(const FileSaver&) = delete;

    void write(const char* bytes, int size);
    /// Writes over bytes that were written.
    void rewrite(qint64 at, const char* bytes, int size);
    /// Puts the file in its place; tells the reason if anything failed, be it ahead of this.
    SaveResult finish(QString& reason);

private:
    bool isDone(int error) { return (m_error = error) == 0; }
    void begin();
    QString folder() const;
    SaveResult fail(QString& reason) const;
    SaveResult replace(QString& reason);
    int copyTo(SystemFile& file);
    SaveResult overwrite(QString& reason);
    SaveResult writeToDevice(QString& reason);

    std::string m_path;
    std::optional<std::filesystem::path> m_replaced;
    std::optional<NewFile> m_new;
    QByteArray m_held;
    qint64 m_size = 0;
    bool m_isBegun = false;
    int m_error = 0;
    QString m_refusal;   ///< why nothing can be written
    QString m_hindrance; ///< why no new file can take the place of the old one
};

} // namespace TALLYFORM
