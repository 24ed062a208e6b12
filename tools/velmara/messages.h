#pragma once

#include <frequencystore/frequencystore.h>

/// What an operator is told.

/// A failure with its place in the input, as far as it is known.
QString describe(const TALLYFORM::Fault& fault);
/// Whether a message says already which file it is about.
bool tellsFile(const QString& message, const QString& file);
/// Why a file could not be read.
QString describe(const QString& file, const Velmara::ImportReport& report);
/// How much there is to be told of like cases.
enum class Extent { First, All };
/// What of a file was not read as it stands there.
QStringList warningsOf(const QString& file, const Velmara::ImportReport& report, Extent extent);
/// Why detection results of a file could not be converted.
QString describe(const QString& file, const Velmara::ConversionReport& report);
/// The detection results of a file that gave no entry, the first of many.
QStringList refusalsIn(const QString& file, const Velmara::ConversionReport& report);
/// What entries do not take over of their detection results.
QStringList lossesIn(const QString& file, const Velmara::ConversionReport& report);
/// What of a file that was written will not be read back as it was.
QStringList warningsOf(const QString& file, const Velmara::ExportReport& report);
