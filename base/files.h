#pragma once

#include "base/tallybase_export.h"

#include <QString>

#include <functional>

class QByteArray;
class QFile;

namespace TALLYFORM {

/// Takes bytes one portion after the other.
using ByteDrain = std::function<void(const char* bytes, int size)>;

/// What became of a file that was to be saved.
enum class SaveResult { Saved, NotOpened, NotWritten, NotProduced };

/// Writes a file as a whole or not at all: at any moment the path holds the old content or the new one. Links are
/// followed, and owner, group and permissions stay, as far as the system allows. What is no regular file, such as a
/// pipe or a device, is written as it stands, and so is a file that no new one can take the place of. Tells the reason
/// if saving failed.
TALLYBASE_EXPORT SaveResult SaveFile(const QString& path, const QByteArray& content, QString& reason);
/// The same with content that need not be there as a whole: `produce` hands it to the drain that it gets, and then
/// gives true; with false, which has no reason here, or an exception nothing is saved. The disk is not touched before
/// the first bytes come.
TALLYBASE_EXPORT SaveResult SaveFile(const QString& path, const std::function<bool(const ByteDrain&)>& produce,
                                     QString& reason);

/// Reads an open file from its position to its end; false, with the reason, if it cannot be read or is too large.
TALLYBASE_EXPORT bool ReadFile(QFile& file, QByteArray& content, QString& reason);

/// The largest input in bytes, for files as they are and for representations when they are no longer compressed.
TALLYBASE_EXPORT qint64 GetInputLimit();
/// 1 GiB until it is set; from any thread.
TALLYBASE_EXPORT void SetInputLimit(qint64 bytes);

} // namespace TALLYFORM
