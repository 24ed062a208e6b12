#pragma once

/// Each of these throws if a floor does not do the work of the library.

#include "bench/floors.h"

namespace Velmara::bench {

/// The same document is written, byte for byte, and each of its values read.
void requireSame(const XmlFloor& floor, const QString& document, const QString& output);
/// The same bytes are written, and each number in them read.
void requireSame(const TaggedFloor& floor, const QByteArray& bytes);
/// The same file is written, byte for byte, and each of its cells read.
void requireSame(const CsvFloor& floor, const QString& file, const QString& output);
/// A message that was read holds all values of the document, but for the versions of records.
void requireSame(const Tally& message, const std::vector<XmlToken>& document);

} // namespace Velmara::bench
