#pragma once

class QString;

namespace TALLYFORM {

class ITallyObject;
class TallyFormException;
enum class WrittenForm;

/// Tells why an operation answers with false: the object's logger and, where the mask allows it, the trace.
void report(const ITallyObject& object, const QString& reason, const QString& sourceFile, unsigned short line);

/// The same for a failure that passes on to the caller, which learns from it where in the input it arose.
void report(const ITallyObject& object, TallyFormException& failure, const QString& origin, const QString& sourceFile,
            unsigned short line);

/// Tells what an object that does not validate has lost on being written; one that does refuses it.
void reportUncarried(const ITallyObject& object, WrittenForm form, const QString& sourceFile, unsigned short line);

} // namespace TALLYFORM
