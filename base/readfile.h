#pragma once

#include "base/tallybase_export.h"

#include <QString>

class QByteArray;
class QFile;

namespace TALLYFORM {

/// Reads an open file from its position to its end; false, with the reason, if it cannot be read or is too large.
TALLYBASE_EXPORT bool ReadFile(QFile& file, QByteArray& content, QString& reason);

/// The largest input in bytes, for files as they are and for representations when they are no longer compressed.
TALLYBASE_EXPORT qint64 GetInputLimit();
/// 1 GiB until it is set; from any thread.
TALLYBASE_EXPORT void SetInputLimit(qint64 bytes);

} // namespace TALLYFORM
