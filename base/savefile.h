#pragma once

#include "base/tallybase_export.h"

class QByteArray;
class QString;

namespace TALLYFORM {

enum class SaveResult { Saved, NotOpened, NotWritten };

/// Replaces a file's content as a whole or not at all; tells the reason if that failed.
TALLYBASE_EXPORT SaveResult SaveFile(const QString& path, const QByteArray& content, QString& reason);

} // namespace TALLYFORM
