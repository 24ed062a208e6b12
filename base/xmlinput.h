#pragma once

class QByteArray;
class QString;
class QTextCodec;

namespace TALLYFORM {

/// Whether a tag of a document in UTF-8 has so many attributes that the parser, which compares each with each, would
/// not come to an end.
bool hasCrowdedTag(const QByteArray& document);
/// The same for a text.
bool hasCrowdedTag(const QString& document);

/// The codec of a document in another encoding than UTF-8; null for one in UTF-8.
QTextCodec* foreignCodec(const QByteArray& document);

} // namespace TALLYFORM
