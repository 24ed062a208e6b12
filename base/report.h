#pragma once

class QString;

namespace TALLYFORM {

class ITallyObject;

/// Tells why an operation answers with false: the object's logger and, where the mask allows it, the trace.
void report(const ITallyObject& object, const QString& reason, const QString& sourceFile, unsigned short line);

} // namespace TALLYFORM
