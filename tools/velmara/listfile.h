#pragma once

#include <frequencystore/frequencystore.h>

/// The forms in which a list can stand in a file, told apart by the file's extension.
enum class Form { Csv, Xml, Tagged, Packed };

/// Throws TallyException for an extension that names no form.
Form formOf(const QString& path);

/// Reads and checks a list of store entries, or of detection results for that list type, into the helper; its list type
/// tells the CSV format. Adds warnings for the operator. Throws TallyFormException, which tells the place in the file
/// where it is known.
void readList(const QString& path, Velmara::FrequencyStoreListHelper& helper, QStringList& warnings);

/// Writes the list; detection results become store entries in all forms but CSV. Adds warnings for the operator.
/// Throws TallyFormException; a file that was there then stays as it was.
void writeList(const QString& path, Velmara::FrequencyStoreListHelper& helper, QStringList& warnings);
