#pragma once

#include "base/exceptions.h"
#include "base/sourceplace.h"

namespace TALLYFORM {

class ITallyObject;
enum class WrittenForm;

/// What an operation answers with false, for its caller to learn from the logger.
class Refusal final : public TallyException
{
public:
    Refusal(const InputPlace& place, const QString& message, Fault::Kind kind, const QString& member = QString());
};

/// Tells the object's logger and, where the mask allows it, the trace.
void report(const ITallyObject& object, const QString& text, SourcePlace place = SourcePlace());
/// The same for a failure, with its place in the input.
void report(const ITallyObject& object, const TallyFormException& failure, SourcePlace place = SourcePlace());

/// Tells what an object that does not validate has lost on being written; one that does refuses it.
void reportUncarried(const ITallyObject& object, WrittenForm form, SourcePlace place = SourcePlace());

/// Runs an action, and gives whether it was not refused; a refusal is reported.
template <class Action> bool isDone(const ITallyObject& object, Action action, SourcePlace place = SourcePlace())
{
    try {
        action();
        return true;
    } catch (const Refusal& refusal) {
        report(object, refusal, place);
        return false;
    }
}

} // namespace TALLYFORM
