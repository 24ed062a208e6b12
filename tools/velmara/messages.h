#pragma once

#include <frequencystore/frequencystore.h>

/// What an operator is told.

/// A failure with its place in the input, as far as it is known.
QString describe(const TALLYFORM::TallyFormException& failure);
/// Whether a message says already which file it is about.
bool tellsFile(const QString& message, const QString& file);
/// Why a file could not be read.
QString describe(const QString& file, const Velmara::ImportReport& report);
/// What of a file was not read as it stands there. Tells all if bad rows were skipped, else the first of many like
/// cases.
QStringList warningsOf(const QString& file, const Velmara::ImportReport& report);
/// What of a file that was written will not be read back as it was.
QStringList warningsOf(const QString& file, const Velmara::ExportReport& report);
