#pragma once

#include "base/tallybase_export.h"

#include <QString>

#include <functional>

class QByteArray;

namespace TALLYFORM {

/// Takes bytes one portion after the other.
using ByteSink = std::function<void(const char* bytes, int size)>;

/// What became of a file that was to be saved.
enum class SaveResult { Saved, NotOpened, NotWritten, NotProduced };

/// Writes a file as a whole or not at all: at any moment the path holds the old content or the new one. Links are
/// followed, and owner, group and permissions stay, as far as the system allows. What is no regular file, such as a
/// pipe or a device, is written as it stands, and so is a file that no new one can take the place of. Tells the reason
/// if saving failed.
TALLYBASE_EXPORT SaveResult SaveFile(const QString& path, const QByteArray& content, QString& reason);
/// The same with content that need not be there as a whole: `produce` hands it to the sink that it gets, and then
/// gives true; with false, which has no reason here, or an exception nothing is saved. The disk is not touched before
/// the first bytes come.
TALLYBASE_EXPORT SaveResult SaveFile(const QString& path, const std::function<bool(const ByteSink&)>& produce,
                                     QString& reason);

} // namespace TALLYFORM
