#pragma once

#include <frequencystore/frequencystore.h>

/// The forms in which a list can stand in a file, told apart by the file's extension.
enum class Form { Csv, Xml, Tagged, Packed };

/// Throws TallyException for an extension that names no form.
Form formOf(const QString& path);

/// Reads and checks a list. Throws TallyFormException, which tells the place in the file where it is known.
Velmara::FrequencyStoreList readList(const QString& path, Velmara::FileHandling::ListType type);

/// Writes a list. Throws TallyFormException; a file that was there then stays as it was.
void writeList(const QString& path, const Velmara::FrequencyStoreList& list, Velmara::FileHandling::ListType type);
