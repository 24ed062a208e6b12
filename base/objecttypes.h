#pragma once

#include <QtGlobal>

namespace TALLYFORM {

/// What kind of report an object is part of; the records of the frequency store are of no such kind.
enum class ObjectTypes : qint8 { None };

} // namespace TALLYFORM
