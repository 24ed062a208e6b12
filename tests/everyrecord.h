#pragma once

/// What tests of all record classes share: records of each, of which only the descriptions know the class.

#include "recordfixture.h"

/// A record class, and the way to records of it with random content.
struct RecordClass
{
    const Velmara::RecordDescription& of;
    std::unique_ptr<TALLYFORM::ITallyObject> (*fill)(RandomFiller& filler);
};

/// Every record class.
const QVector<RecordClass>& recordClasses();

/// Calls a visitor with some records of each class, in the first of which everything is set: [](auto& of, auto& record)
template <class Visit> void forRecords(unsigned count, Visit visit)
{
    for (const RecordClass& each : recordClasses()) {
        for (unsigned seed = 0; seed < count; ++seed) {
            SCOPED_TRACE(each.of.name.toStdString() + " of seed " + std::to_string(seed));
            RandomFiller filler(seed);
            visit(each.of, *each.fill(seed ? filler : filler.setEverything()));
        }
    }
}
