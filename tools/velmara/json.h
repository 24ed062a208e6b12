#pragma once

#include <base/tallyobject.h>

#include <QJsonObject>

/// The members of a record that are set, by name: numbers, booleans, texts, records as objects, lists as arrays. A
/// number that JSON cannot hold is a text; one that is none is null.
QJsonObject jsonOf(const TALLYFORM::ITallyObject& record, const QString& except = {});
