#pragma once

#include <QStringList>

/// velmara convert IN OUT --type TYPE. Gives the exit status.
int convert(const QStringList& arguments);
