#pragma once

#include <QByteArray>

namespace Velmara::fuzz {

/// The words of all forms, as libFuzzer reads them: names of elements and attributes, names of enumerations, schema
/// versions, tags.
QByteArray dictionary();

} // namespace Velmara::fuzz
