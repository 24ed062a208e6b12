#pragma once

#include "listfile.h"

/// Turns the detection results in the helper, which were read from a file, into the store entries that all forms but
/// CSV hold; those that give none are dropped if the file is to be read so. Warns of what is lost. Throws
/// TallyException.
void convertResults(const ListFile& file, Velmara::FrequencyStoreListHelper& helper, Form to);
