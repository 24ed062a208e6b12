#pragma once

/// The lists that are measured: made up, plausible, and the same in every run.

#include "frequencystore/frequencystore.h"

namespace Velmara::bench {

/// Channels with receiver settings, their details, and direction-finding settings.
FrequencyStoreList memoryScan(int entries);
/// A list with one entry and many polygons.
FrequencyStoreList targetAreas(int areas, int points);
DetectionResultList detectionResults(int results);
/// An entry with every block that can stand beside receiver settings.
FrequencyStoreEntry fullEntry();

} // namespace Velmara::bench
