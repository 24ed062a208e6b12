#pragma once

/// Everything the library offers.

#include "base/converters.h"
#include "base/errorhandler.h"
#include "base/exceptions.h"
#include "base/logger.h"
#include "base/wholeload.h"
#include "frequencystore/csvfileloader.h"
#include "frequencystore/detectionresulthelper.h"
#include "frequencystore/filehandling.h"
#include "frequencystore/records/allrecords.h"
#include "frequencystore/reflection.h"
