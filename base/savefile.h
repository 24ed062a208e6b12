#pragma once

#include "base/tallybase_export.h"

class QByteArray;
class QString;

namespace TALLYFORM {

/// Replaces a file's content as a whole or not at all; false, with the reason, if that failed.
TALLYBASE_EXPORT bool SaveFile(const QString& path, const QByteArray& content, QString& reason);

} // namespace TALLYFORM
