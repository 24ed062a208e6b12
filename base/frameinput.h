#pragma once

#include "base/tallybase_export.h"

#include <QFile>

#include <memory>
#include <optional>

namespace TALLYFORM {

/// The bytes of a binary form in a file, one portion after the other.
class TALLYBASE_EXPORT FrameInput
{
public:
    /// With a tag, a file that does not begin with it may hold the frame compressed. Throws TallyException for a file
    /// that cannot be opened.
    FrameInput(const QString& path, std::optional<quint32> tag);
    ~FrameInput();

    /// Gives up to `size` bytes; 0 at the end. Throws TallyException where the file cannot be read or is damaged.
    qint64 read(char* to, qint64 size);
    QString path() const { return m_file.fileName(); }

private:
    class Inflation;

    qint64 readFile(char* to, qint64 size);

    QFile m_file;
    std::unique_ptr<Inflation> m_inflation; ///< null for what is not compressed
};

} // namespace TALLYFORM
