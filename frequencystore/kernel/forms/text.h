#pragma once

/// The text forms of members, in XML and in tagged binary, and what of a record is written at all.

#include "frequencystore/kernel/bytes/numbers.h"
#include "frequencystore/kernel/model/access.h"
#include "frequencystore/kernel/model/walk.h"

#include <array>
#include <string_view>

namespace Velmara::kernel {

using TextBuffer = std::array<char, maxNumberLength>;

/// The text of a value. What is made of a number is ASCII in the buffer; null for a date-time that has no text.
QLatin1String toText(const Member& m, double value, TextBuffer& buffer);
QLatin1String toText(const Member& m, int value, TextBuffer& buffer);
QLatin1String toText(const Member& m, unsigned int value, TextBuffer& buffer);
QLatin1String toText(const Member& m, quint64 value, TextBuffer& buffer);
QLatin1String toText(const Member& m, bool value, TextBuffer& buffer);
QLatin1String toText(const Member& m, const QDateTime& value, TextBuffer& buffer);
inline const QString& toText(const Member&, const QString& value, TextBuffer&) { return value; }
template <IsEnum E> const QString& toText(const Member& m, E value, TextBuffer&) { return m.nameAt(int(value)); }

/// A text that is no number gives 0.
void parse(const ITallyObject& self, const Member& m, std::string_view utf8, double& value);
void parse(const ITallyObject& self, const Member& m, std::string_view utf8, int& value);
void parse(const ITallyObject& self, const Member& m, std::string_view utf8, unsigned int& value);
void parse(const ITallyObject& self, const Member& m, std::string_view utf8, quint64& value);
/// Throws InvalidXmlException for an empty text that has no meaning to the member, under validation.
void parse(const ITallyObject& self, const Member& m, std::string_view utf8, bool& value);
void parse(const ITallyObject& self, const Member& m, std::string_view utf8, QDateTime& value);
/// A member that stands in the input has a value: an empty text is never null.
void parse(const ITallyObject& self, const Member& m, std::string_view utf8, QString& value);
template <IsEnum E> void parse(const ITallyObject&, const Member& m, std::string_view utf8, E& value)
{
    value = E(m.valueOf(QLatin1String(utf8.data(), int(utf8.size()))));
}

/// Whether a member of this type is written, in every form.
template <class T> VELMARA_FOLDED inline bool isWritten(const RecordData& data, const Member& m)
{
    constexpr bool byBitAlone = std::is_same_v<T, bool> || IsRecord<T>;
    return data.isChosen(m) && (data.isSet(m) || (!byBitAlone && m.need != Member::Need::Optional));
}

} // namespace Velmara::kernel
